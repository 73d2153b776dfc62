#include "person/script_person.h"

#include <algorithm>
#include <vector>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "core/setting_names.h"
#include "core/settings_catalogue.h"
#include "person/dialog_controls.h"
#include "person/ticker_list.h"

namespace mirelo {

namespace {

std::vector<std::string> Names(const std::string& text) {
  std::vector<std::string> names = Split(text, ",");
  for (std::string& name : names) name = Trim(name);
  return names;
}

std::vector<std::string> Tickers(const std::string& text) {
  std::vector<std::string> tickers = SplitTickers(text);
  for (const std::string& ticker : tickers) {
    if (!IsTickerName(ticker)) throw RuntimeError(5, "\"" + ticker + "\" is no ticker");
  }
  return tickers;
}

DialogWishes::Setting WishedSetting(const std::string& name, const std::string& value) {
  const std::string key = OwnSpelling(ParseSettingName(name)).key;
  const Setting* const setting = FindSetting(catalogue::kSettings, key);
  if (setting == nullptr || FindDialogControl(key) == nullptr)
    throw RuntimeError(5, "the dialog has nothing that is named \"" + name + "\"");
  // The dialog finds a choice by a part of it.
  if (setting->form != SettingForm::Choice) SettingValue(*setting, value);
  return {key, value};
}

}  // namespace

void ScriptPerson::Wish(const std::string& name, const std::string& value) {
  DialogWishes wishes = wishes_;
  try {
    if (EqualText(name, "Tickers")) {
      wishes.tickers = Tickers(value);
    } else if (EqualText(name, "Columns") || EqualText(name, "ListRight")) {
      wishes.columns = Names(value);
    } else if (EqualText(name, "History")) {
      wishes.history = HistoryFields(value);
    } else if (EqualText(name, "Charts")) {
      wishes.charts = Variant(value).ToBoolean();
    } else if (EqualText(name, "AcceptCosts")) {
      wishes.accepts_costs = Variant(value).ToBoolean();
    } else {
      DialogWishes::Setting wished = WishedSetting(name, value);
      std::erase_if(wishes.settings, [&](const auto& other) { return other.key == wished.key; });
      wishes.settings.push_back(std::move(wished));
    }
    AddWhatHistoriesNeed(wishes);
  } catch (const Unfulfilled& unfulfilled) {
    throw RuntimeError(5, unfulfilled.what());
  }
  wishes_ = std::move(wishes);
}

bool ScriptPerson::AcceptsCosts(const std::vector<std::string>& costs) {
  if (!wishes_.accepts_costs) told_ << "Go was not pressed, since it costs this (AcceptCosts):\n";
  for (const std::string& cost : costs) told_ << "  " << cost << "\n";
  return wishes_.accepts_costs;
}

std::string ScriptPerson::Told() {
  std::string told = told_.Take();
  if (auto complaint = person_.TakeComplaint()) told += "The dialog was cancelled: " + complaint->text + "\n";
  return told;
}

}  // namespace mirelo
