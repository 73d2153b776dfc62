#include "app/watch_lists.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

#include "automation/array.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "core/settings_catalogue.h"
#include "core/settings_table.h"
#include "person/ticker_list.h"

namespace mirelo::app {

namespace {

constexpr std::size_t kLongestName = 40;

}  // namespace

WatchLists::WatchLists() { store_.Init("Kestrin", "Dovanta2"); }

// The registry has no call that removes a single value: a list that is gone is an empty one.
std::vector<std::string> WatchLists::Names() {
  Array<std::string> keys;
  std::vector<std::string> names;
  if (!store_.GetAllKeys(catalogue::kWatchLists, keys) || !keys.IsAllocated()) return names;
  for (const std::string& key : keys) {
    if (!Tickers(key).empty()) names.push_back(key);
  }
  return names;
}

std::vector<std::string> WatchLists::Tickers(const std::string& name) {
  return SplitTickers(store_.GetSetting(catalogue::kWatchLists, name, "").ToText());
}

std::vector<std::string> WatchLists::Existing(const std::string& name) {
  auto tickers = Tickers(name);
  if (tickers.empty())
    throw RuntimeError(Errors::InvalidProcedureCall().Number(),
                       "no watch list is named \"" + name + "\"; mirelo list show names them all");
  return tickers;
}

void WatchLists::Store(const std::string& name, const std::vector<std::string>& tickers) {
  const Setting* const setting = FindSetting(catalogue::kWatchLists, name);
  store_.SaveSetting(catalogue::kWatchLists, name, SettingValue(*setting, Join(tickers, ",")));
}

std::vector<std::string> WithList(std::vector<std::string> tickers, const std::string& list) {
  if (list.empty()) return tickers;
  const std::vector<std::string> more = WatchLists().Existing(list);
  tickers.insert(tickers.end(), more.begin(), more.end());
  return tickers;
}

bool IsListName(const std::string& name) {
  return !name.empty() && name.size() <= kLongestName && std::ranges::all_of(name, [](unsigned char letter) {
    return letter < 0x80 && (std::isalnum(letter) != 0 || letter == '-' || letter == '_' || letter == '.');
  });
}

}  // namespace mirelo::app
