// Go: the quote table and a vertical sheet for each ticker, in a new workbook. Only the press of the button
// is measured, per ticker.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "adapters/workbook/spreadsheet.h"
#include "core/CAppSettings.h"
#include "core/cMirelo.h"
#include "core/mGlobal.h"
#include "dialog/frmMirelo.h"
#include "dialog/scripted_portfolios.h"
#include "host/host.h"
#include "support/answering_internet.h"
#include "support/manual_clock.h"
#include "support/manual_loop.h"
#include "support/memory_registry.h"
#include "support/memory_vault.h"
#include "support/memory_winsock.h"
#include "support/recording_system.h"
#include "support/scripted_desktop.h"
#include "support/test_host.h"

namespace mirelo {
namespace {

constexpr const char* kAllColumns =
    "Ticker,Date,Time,Last,Bid,Ask,Change,Tick,Volume,High,Low,BidSize,AskSize,LastVolume,AvgTrade,"
    "NumTrades,Open,52w Low,52w High";

// A person with a dialog, and a QuoteTracker that answers.
class Desk {
 public:
  Desk() {
    host_.Use(loop_).Use(clock_).Use(registry_).Use(internet_).Use(desktop_).Use(system_).Use(sockets_).Use(
        vault_);
    installed_.emplace(host_);
    facade_.emplace();
    internet_.answer = testing::ScriptedPortfolios();
    mGlobal::AppSettings().SaveSetting("Settings", "ListLeft", Variant(""));
    mGlobal::AppSettings().SaveSetting("Settings", "ListRight", Variant(kAllColumns));
  }

  // How long Go takes for so many tickers with every field ticked. Negative when it was refused.
  std::chrono::duration<double> Go(std::int32_t tickers) {
    auto spreadsheet = workbook::Spreadsheet::New();
    facade_->m_ObjExcelApplication(spreadsheet.Application());
    std::chrono::duration<double> taken{-1};
    desktop_.person["frmMirelo"] = [&](forms::Form& shown) {
      auto& form = dynamic_cast<frmMirelo&>(shown);
      for (std::int32_t i = 1; i <= tickers; ++i) {
        std::int32_t unused = 0;
        form.AddTicker("TCK" + std::to_string(i), unused);
      }
      for (std::int32_t row = 1; row <= tickers; ++row) {
        for (std::int32_t col = 2; col < form.FG.Cols(); ++col) form.FG.TextMatrix(row, col, "-1");
      }
      const auto start = std::chrono::steady_clock::now();
      form.ButGo.UserPress();
      taken = std::chrono::steady_clock::now() - start;
    };
    if (facade_->LoadFrmMirelo() != 78) return std::chrono::duration<double>(-1);
    return taken;
  }

 private:
  testing::ManualLoop loop_;
  testing::ManualClock clock_;
  testing::MemoryRegistry registry_;
  testing::AnsweringInternet internet_;
  testing::ScriptedDesktop desktop_;
  testing::RecordingSystem system_;
  testing::MemoryWinsock sockets_;
  testing::MemoryVault vault_;
  testing::TestHost host_;
  std::optional<host::HostScope> installed_;
  std::optional<cMirelo> facade_;
};

void Go(benchmark::State& state) {
  const auto tickers = static_cast<std::int32_t>(state.range(0));
  Desk desk;
  double seconds = 0;
  for (auto _ : state) {
    const double taken = desk.Go(tickers).count();
    if (taken < 0) state.SkipWithError("Go was refused");
    state.SetIterationTime(taken);
    seconds += taken;
  }
  state.counters["ns_per_item"] = seconds * 1e9 / static_cast<double>(state.iterations()) / tickers;
}

BENCHMARK(Go)->Name("table/go")->Arg(50)->Arg(1000)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace mirelo

BENCHMARK_MAIN();
