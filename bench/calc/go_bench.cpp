// What the dialog's Go takes in an open document of the office's, in the workbook in memory, and what the
// office itself needs for the same document.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "adapters/calc/objects/spreadsheet_program.h"
#include "adapters/workbook/spreadsheet.h"
#include "calc/go_by_hand.h"
#include "calc/office.h"
#include "calc/told_document.h"
#include "worksheet/desk.h"

namespace mirelo {
namespace {

constexpr std::int32_t kHistories = 50;

using Seconds = std::chrono::duration<double>;

Seconds GoOf(std::shared_ptr<host::excel::Application> application) {
  Desk desk;
  const Seconds taken = desk.Go(std::move(application), kHistories);
  if (taken < Seconds::zero()) throw std::runtime_error("Go was refused");
  return taken;
}

void Note(benchmark::State& state, Seconds taken) {
  state.SetIterationTime(taken.count());
  state.counters["ns_per_item"] = taken.count() * 1e9;
}

void Go(benchmark::State& state) {
  for (auto _ : state) {
    const OpenDocument document;
    Note(state, GoOf(calc::ApplicationOf(OfficeContext(), document.Spreadsheet())));
  }
}
BENCHMARK(Go)->Name("calc/go")->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

void GoInMemory(benchmark::State& state) {
  Seconds seconds{};
  for (auto _ : state) {
    auto spreadsheet = workbook::Spreadsheet::New();
    const Seconds taken = GoOf(spreadsheet.Application());
    state.SetIterationTime(taken.count());
    seconds += taken;
  }
  state.counters["ns_per_item"] = seconds.count() * 1e9 / static_cast<double>(state.iterations());
}
BENCHMARK(GoInMemory)->Name("calc/bare_go")->UseManualTime()->Unit(benchmark::kMillisecond);

// The document that Go leaves.
const std::vector<std::string>& LeftByGo() {
  static const std::vector<std::string> told = [] {
    const OpenDocument document;
    GoOf(calc::ApplicationOf(OfficeContext(), document.Spreadsheet()));
    return Told(document.Spreadsheet());
  }();
  return told;
}

// The first line in which it is another one; empty where it is the same.
std::string DifferenceFromGo(const OpenDocument& document) {
  const std::vector<std::string> told = Told(document.Spreadsheet());
  const auto [made, left] = std::ranges::mismatch(told, LeftByGo());
  if (made == told.end() && left == LeftByGo().end()) return {};
  return "made: " + (made == told.end() ? "nothing" : *made) +
         "; Go leaves: " + (left == LeftByGo().end() ? "nothing" : *left);
}

void ByHand(benchmark::State& state) {
  for (auto _ : state) {
    const OpenDocument document;
    const auto start = std::chrono::steady_clock::now();
    GoByHand(document.Spreadsheet(), kHistories);
    Note(state, std::chrono::steady_clock::now() - start);
    const std::string difference = DifferenceFromGo(document);
    if (!difference.empty()) state.SkipWithError(difference.c_str());
  }
}
BENCHMARK(ByHand)->Name("calc/go_by_hand")->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace mirelo
