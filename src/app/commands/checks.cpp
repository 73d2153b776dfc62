#include "app/commands/checks.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <cstring>
#include <string>

#include "app/duration.h"
#include "app/watch_lists.h"
#include "app/workbook/also_files.h"
#include "app/workbook/spreadsheet_program.h"
#include "automation/runtime_error.h"
#include "core/setting_names.h"
#include "core/settings_catalogue.h"
#include "person/ticker_list.h"

namespace mirelo::app {

CLI::Validator IsTickers() {
  return CLI::Validator(
      [](const std::string& text) {
        const auto tickers = SplitTickers(text);
        if (tickers.empty()) return "\"" + text + "\" names no ticker";
        for (const std::string& ticker : tickers) {
          if (!IsTickerName(ticker)) return "a ticker holds no bracket: \"" + ticker + "\"";
        }
        return std::string();
      },
      "");
}

CLI::Validator IsListNamed() {
  return CLI::Validator(
      [](const std::string& name) {
        return IsListName(name) ? std::string()
                                : "\"" + name + "\" is no name of a list; take letters, digits, -, _ and .";
      },
      "");
}

CLI::Validator IsWorkbookName() {
  return CLI::Validator([](const std::string& file) { return WhyNoWorkbook(file); }, "");
}

CLI::Validator IsAlsoFile() {
  return CLI::Validator([](const std::string& file) { return WhyNoAlsoFile(file); }, "");
}

CLI::Validator IsDuration() {
  return CLI::Validator(
      [](const std::string& text) {
        return ParseDuration(text) ? std::string()
                                   : "\"" + text + "\" is no duration; write 20s, 90m or 8h30m";
      },
      "");
}

CLI::Validator IsDateFormat() {
  return CLI::Validator(
      [](const std::string& format) {
        const bool has_letters = format.find_first_of("dmyDMY") != std::string::npos;
        const bool has_others = std::ranges::any_of(format, [](unsigned char letter) {
          return std::isalpha(letter) != 0 && std::strchr("dmyDMY", letter) == nullptr;
        });
        return has_letters && !has_others ? std::string()
                                          : "\"" + format + "\" is no format of a date; write mm/dd/yyyy";
      },
      "");
}

CLI::Validator IsAllowedFor(const char* key) {
  return CLI::Validator(
      [key](const std::string& text) {
        try {
          SettingValue(*FindSetting(catalogue::kSettings, key), text);
          return std::string();
        } catch (const RuntimeError& error) {
          return error.Description();
        }
      },
      "");
}

}  // namespace mirelo::app
