// Go: the quote table and a vertical sheet for each ticker, in a new workbook. Only the press of the button
// is measured, per ticker.

#include <benchmark/benchmark.h>

#include <cstdint>

#include "adapters/workbook/spreadsheet.h"
#include "worksheet/desk.h"

namespace mirelo {
namespace {

void Go(benchmark::State& state) {
  const auto tickers = static_cast<std::int32_t>(state.range(0));
  Desk desk;
  double seconds = 0;
  for (auto _ : state) {
    auto spreadsheet = workbook::Spreadsheet::New();
    const double taken = desk.Go(spreadsheet.Application(), tickers).count();
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
