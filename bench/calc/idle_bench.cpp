// What the extension costs the office that has loaded it and has nothing for it to do.

#include <benchmark/benchmark.h>
#include <ctime>

#include <algorithm>
#include <chrono>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/table/XCellRange.hpp>

#include "calc/office.h"

namespace mirelo {
namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

constexpr std::chrono::seconds kToSettle{10};
constexpr std::chrono::seconds kMeasured{10};

double SecondsOf(clockid_t clock) {
  timespec time{};
  ::clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

// Of all threads, in a second, while a document is open in which nobody does anything.
double NanosecondsWorked() {
  const OpenDocument document;
  LetTheOfficeRun(kToSettle);
  const double used = SecondsOf(CLOCK_PROCESS_CPUTIME_ID);
  const double begun = SecondsOf(CLOCK_MONOTONIC);
  LetTheOfficeRun(kMeasured);
  return (SecondsOf(CLOCK_PROCESS_CPUTIME_ID) - used) / (SecondsOf(CLOCK_MONOTONIC) - begun) * 1e9;
}

// The first cell that asks for a quote loads the extension, which asks for nothing once the cell is gone.
void LoadExtension() {
  const OpenDocument document;
  const Reference<css::container::XIndexAccess> sheets(document.Spreadsheet()->getSheets(), UNO_QUERY_THROW);
  const Reference<css::table::XCellRange> sheet(sheets->getByIndex(0), UNO_QUERY_THROW);
  sheet->getCellByPosition(0, 0)->setFormula("=QUOTE(\"MSFT\")");
  LetTheOfficeRun(kToSettle);
}

// Over the same office before. It can be loaded once.
void Idle(benchmark::State& state) {
  for (auto _ : state) {
    const double before = NanosecondsWorked();
    LoadExtension();
    const double loaded = NanosecondsWorked();
    state.counters["before"] = before;
    state.counters["loaded"] = loaded;
    state.counters["ns_per_item"] = std::max(loaded - before, 0.0);
  }
}
BENCHMARK(Idle)->Name("calc/idle")->Iterations(1)->Repetitions(1);

}  // namespace
}  // namespace mirelo
