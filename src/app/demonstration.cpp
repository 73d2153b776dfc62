#include "app/demonstration.h"

#include <algorithm>
#include <string>
#include <vector>

#include "adapters/sodium/sodium_vault.h"

namespace mirelo::app {

namespace {

const std::vector<std::string> kDemoTickers{"MSFT", "IBM", "CSCO", "INTC", "ORCL", "DELL"};
const std::vector<std::string> kDemoColumns{"Ticker", "Last",       "Change", "Bid", "Ask",
                                            "Volume", "LastVolume", "Date",   "Time"};
const std::vector<std::string> kFields{"Last", "LastVolume", "Time", "Charts"};

// A setting, and another one with a value without which the dialog has it switched off.
struct DemoSetting {
  DialogWishes::Setting setting;
  DialogWishes::Setting needs = {};
};

// What a setting needs stands before it.
const std::vector<DemoSetting> kDemoSettings{
    {{"UpdateEvery", "1"}},
    {{"Seconds", "0"}, {"UpdateEvery", "1"}},
    {{"ComQuoteSource", "Alpstein Finance (delayed)"}, {"Seconds", "0"}},
    {{"Style", "Blue"}},
    {{"VerticalTable", "1"}},
    {{"RowsLimit", "100"}, {"VerticalTable", "1"}},
    {{"BuildCharts", "1"}},
    {{"ChartStyle", "Blue"}, {"BuildCharts", "1"}},
    {{"ChartPoints", "20"}, {"BuildCharts", "1"}},
};

// As the stand-in has them unless told otherwise.
constexpr const char* kApplicationName = "MireloDemo";
constexpr const char* kApplicationSecret = "demo-secret";

// The value that is wished; empty when none is.
std::string ValueOf(const DialogWishes& wishes, const std::string& key) {
  const auto found = std::ranges::find(wishes.settings, key, &DialogWishes::Setting::key);
  return found == wishes.settings.end() ? std::string() : found->value;
}

}  // namespace

Demonstration::Demonstration() {
  sodium::SodiumVault vault(folder_.Path());
  vault.Set({.name = kApplicationName, .secret = kApplicationSecret});
}

GlobalOptions Demonstration::Options(GlobalOptions given) const {
  given.registry = folder_.Path() / "registry.db";
  return given;
}

void Demonstration::Prepare(Session& session) const {
  session.host().KeepCredentialsIn(folder_.Path());
  session.host().OverrideHttpPort(stand_in_.HttpPort());
  session.host().Override("SocketPort", std::to_string(stand_in_.StreamPort()));
}

DialogWishes Demonstration::Wishes(DialogWishes given) const {
  if (given.tickers.empty()) given.tickers = kDemoTickers;
  if (given.columns.empty()) given.columns = kDemoColumns;
  for (const auto& [setting, needs] : kDemoSettings) {
    if (!needs.key.empty() && ValueOf(given, needs.key) != needs.value) continue;
    if (ValueOf(given, setting.key).empty()) given.settings.push_back(setting);
  }
  if (!given.ticks.empty() || !given.history.empty() || ValueOf(given, "VerticalTable") != "1") return given;
  for (const std::string& ticker : given.tickers) {
    for (const std::string& field : kFields) given.ticks.push_back({ticker, field});
  }
  return given;
}

}  // namespace mirelo::app
