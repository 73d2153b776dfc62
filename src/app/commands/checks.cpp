#include "app/commands/checks.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "app/duration.h"
#include "app/watch_lists.h"
#include "automation/runtime_error.h"
#include "core/setting_names.h"
#include "core/settings_catalogue.h"
#include "person/ticker_list.h"

namespace mirelo::app {

std::string WhyNoTickers(const std::string& text) {
  const auto tickers = SplitTickers(text);
  if (tickers.empty()) return "\"" + text + "\" names no ticker";
  for (const std::string& ticker : tickers) {
    if (!IsTickerName(ticker)) return "a ticker holds no bracket: \"" + ticker + "\"";
  }
  return {};
}

std::string WhyNoListName(const std::string& name) {
  if (IsListName(name)) return {};
  return "\"" + name + "\" is no name of a list; take letters, digits, -, _ and .";
}

std::string WhyNoDuration(const std::string& text) {
  if (ParseDuration(text)) return {};
  return "\"" + text + "\" is no duration; write 20s, 90m or 8h30m";
}

std::string WhyNoDateFormat(const std::string& format) {
  const bool has_letters = format.find_first_of("dmyDMY") != std::string::npos;
  const bool has_others = std::ranges::any_of(format, [](unsigned char letter) {
    return std::isalpha(letter) != 0 && std::strchr("dmyDMY", letter) == nullptr;
  });
  if (has_letters && !has_others) return {};
  return "\"" + format + "\" is no format of a date; write mm/dd/yyyy";
}

command_line::WhyNot NotAllowedFor(const char* key) {
  return [key](const std::string& text) {
    try {
      SettingValue(*FindSetting(catalogue::kSettings, key), text);
      return std::string();
    } catch (const RuntimeError& error) {
      return error.Description();
    }
  };
}

}  // namespace mirelo::app
