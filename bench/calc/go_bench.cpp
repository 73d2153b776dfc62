// Go with many histories in a document of the office's, and in the workbook in memory.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <utility>

#include "adapters/calc/objects/spreadsheet_program.h"
#include "adapters/workbook/spreadsheet.h"
#include "calc/office.h"
#include "worksheet/desk.h"

namespace mirelo {
namespace {

constexpr std::int32_t kHistories = 50;

// The seconds of one Go.
double Measure(benchmark::State& state, std::shared_ptr<host::excel::Application> application) {
  Desk desk;
  const double taken = desk.Go(std::move(application), kHistories).count();
  if (taken < 0) state.SkipWithError("Go was refused");
  state.SetIterationTime(taken);
  return taken;
}

void Go(benchmark::State& state) {
  double seconds = 0;
  for (auto _ : state) {
    const OpenDocument document;
    seconds += Measure(state, calc::ApplicationOf(OfficeContext(), document.Spreadsheet()));
  }
  state.counters["ns_per_item"] = seconds * 1e9 / static_cast<double>(state.iterations());
}
BENCHMARK(Go)->Name("calc/go")->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

void GoInMemory(benchmark::State& state) {
  double seconds = 0;
  for (auto _ : state) {
    auto spreadsheet = workbook::Spreadsheet::New();
    seconds += Measure(state, spreadsheet.Application());
  }
  state.counters["ns_per_item"] = seconds * 1e9 / static_cast<double>(state.iterations());
}
BENCHMARK(GoInMemory)->Name("calc/bare_go")->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace mirelo
