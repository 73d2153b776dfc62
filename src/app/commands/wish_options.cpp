#include "app/commands/wish_options.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "app/commands/checks.h"
#include "app/watch_lists.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "command_line/command.h"
#include "core/setting_names.h"
#include "core/settings_catalogue.h"
#include "person/dialog_controls.h"
#include "person/ticker_list.h"
#include "snapshot/column_names.h"

namespace mirelo::app {

namespace {

constexpr const char* kColumnsKey = "ListRight";

// The settings that --set takes, for people.
std::string KeysText() {
  std::string text;
  for (const DialogControl& control : DialogControls()) text += std::string(control.key) + ", ";
  return text + kColumnsKey;
}

// A setting from "key=value". Throws Unfulfilled for one that the dialog cannot be given.
DialogWishes::Setting ParseSetting(const std::string& text) {
  const auto equals = text.find('=');
  if (equals == std::string::npos) throw Unfulfilled("\"" + text + "\" has no \"=\"; write Seconds=15");
  const std::string key = text.substr(0, equals);
  const std::string value = text.substr(equals + 1);

  const SettingName name =
      EqualText(key, catalogue::kFirstSourceKey)
          ? SettingName{std::string(catalogue::kFirstSource), std::string(catalogue::kFirstSourceKey)}
          : OwnSpelling(ParseSettingName(key));
  const Setting* setting = FindSetting(name.section, name.key);
  if (setting == nullptr) {
    throw Unfulfilled("no setting is named \"" + key + "\"; mirelo settings list shows them all");
  }
  if (name.key != kColumnsKey && FindDialogControl(name.key) == nullptr) {
    throw Unfulfilled("the dialog has no control for " + ShortSettingName(name.section, name.key) +
                      "; use mirelo settings set, or one of these here: " + KeysText());
  }
  try {
    // The dialog finds a choice by a part of it, and says what there is to choose from.
    if (setting->form != SettingForm::Choice) SettingValue(*setting, value);
  } catch (const RuntimeError& error) {
    throw Unfulfilled(name.key + ": " + error.Description());
  }
  return {name.key, value};
}

DialogWishes::Tick ParseTick(const std::string& text) {
  const auto colon = text.rfind(':');
  if (colon == std::string::npos || colon == 0 || colon + 1 == text.size()) {
    throw Unfulfilled("\"" + text + "\" is no ticker and field; write MSFT:Last");
  }
  return {text.substr(0, colon), text.substr(colon + 1)};
}

std::vector<std::string> Trimmed(std::vector<std::string> names) {
  for (std::string& name : names) name = Trim(name);
  return names;
}

// What one of the parsers has against a text.
template <class Parse>
command_line::WhyNot WhyNotTakenBy(Parse parse) {
  return [parse](const std::string& text) {
    try {
      parse(text);
      return std::string();
    } catch (const Unfulfilled& unfulfilled) {
      return std::string(unfulfilled.what());
    }
  };
}

}  // namespace

WishOptions::WishOptions(command_line::Command& command) {
  command.AddOption("--tickers", tickers_, "The tickers, joined by commas, in the order of the table")
      .Check(WhyNoTickers);
  command.AddOption("--list", list_, "A watch list whose tickers to take, behind those of --tickers")
      .ValueName("NAME")
      .Check(WhyNoListName);
  command
      .AddOption("--columns", columns_,
                 std::string("The columns of the table, joined by commas; the first one stays the "
                             "ticker's; all names: ") +
                     kAllColumns)
      .SplitAt(',');
  command
      .AddOption("--set", settings_,
                 "A setting and what the dialog is given for it, as Seconds=15; may be repeated. Takes " +
                     KeysText())
      .Repeats([](const std::string& word) { return word.find('=') != word.npos; })
      .Check(WhyNotTakenBy(ParseSetting));
  command
      .AddOption("--tick", ticks_,
                 "A field of a ticker's vertical table to tick, as MSFT:Last, or MSFT:Charts for its "
                 "charts; may be repeated")
      .Repeats([](const std::string& word) { return word.find(':') != word.npos; })
      .Check(WhyNotTakenBy(ParseTick));
  history_option_ =
      command
          .AddOption("--history", history_,
                     "Keep a history of every ticker, with these fields, joined by commas; without a value "
                     "Last,LastVolume,Time. Columns that the table lacks for it are added at its right")
          .ValueName("[FIELDS]")
          .ValueMayLack()
          .Check(WhyNotTakenBy(HistoryFields));
  command.AddFlag(
      "--charts", charts_,
      "Build charts for every ticker, beside its history of Last and LastVolume, which is kept as "
      "by --history");
  command.AddFlag("--chart-axis", chart_axis_, "Build charts with a value axis, as --set AddYAxis=1");
  command.AddFlag("--yes", yes_,
                  "Go on where Go clears something of the workbook, or leaves something undone, of which "
                  "warnings tell");
  command.AddOption("--source", source_,
                    "The quote source to stream from, or a part of its name that no other has; mirelo "
                    "sources lists them. Sets Seconds to 0, which means streaming");
  command.AddOption("--address", address_, "Where QuoteTracker runs, as --set Webaddress=")
      .Check(NotAllowedFor("Webaddress"));
  command.AddOption("--http-port", http_port_, "QuoteTracker's HTTP port, as --set HTTPPort=")
      .Between(1, 65535);
  command.AddOption("--socket-port", socket_port_, "QuoteTracker's stream port, as --set SocketPort=")
      .Between(1, 65535);
}

DialogWishes WishOptions::Wishes() const {
  DialogWishes wishes;
  wishes.tickers = SplitTickers(tickers_);
  wishes.list = list_;
  wishes.columns = Trimmed(columns_);
  for (const std::string& tick : ticks_) wishes.ticks.push_back(ParseTick(tick));

  const auto names = [&](const char* key) {
    return std::ranges::find(wishes.settings, key, &DialogWishes::Setting::key) != wishes.settings.end();
  };
  const auto add = [&](const DialogWishes::Setting& setting) {
    if (names(setting.key.c_str())) throw Unfulfilled(setting.key + " is given twice");
    wishes.settings.push_back(setting);
  };
  for (const std::string& text : settings_) {
    const DialogWishes::Setting setting = ParseSetting(text);
    if (setting.key != kColumnsKey) {
      add(setting);
    } else if (!wishes.columns.empty()) {
      throw Unfulfilled(std::string(kColumnsKey) + " is given twice");
    } else {
      wishes.columns = Trimmed(Split(setting.value, ","));
    }
  }
  const auto assume = [&](const char* key, const char* value) {
    if (!names(key)) add({key, value});
  };
  wishes.accepts_costs = yes_;
  wishes.charts = charts_;
  if (history_option_->IsGiven()) wishes.history = HistoryFields(history_.empty() ? "" : history_.front());
  AddWhatHistoriesNeed(wishes);
  if (chart_axis_) assume("BuildCharts", "1");
  if (chart_axis_) add({"AddYAxis", "1"});
  if (!address_.empty()) add({"Webaddress", address_});
  // The setting has 16 bits, so that ports from 32768 on are negative in it.
  if (http_port_ != 0) add({"HTTPPort", std::to_string(static_cast<std::int16_t>(http_port_))});
  if (socket_port_ != 0) add({"SocketPort", std::to_string(socket_port_)});
  if (!source_.empty()) {
    add({std::string(catalogue::kFirstSourceKey), source_});
    assume("Seconds", "0");
    assume("UpdateEvery", "1");
  }
  return wishes;
}

void TakeList(DialogWishes& wishes) { wishes.tickers = WithList(std::move(wishes.tickers), wishes.list); }

}  // namespace mirelo::app
