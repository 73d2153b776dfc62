// How old a quote is when it stands in its cell: from the moment at which QuoteTracker hands it to its
// socket, over ours, the decoder and the tables of a working day, to the cell that is read back.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "app/workbook/workbook_keeper.h"
#include "day/noted_day.h"
#include "day/streaming_wishes.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo {
namespace {

using Nanoseconds = std::chrono::nanoseconds;

constexpr double kRate = 1000;
constexpr std::size_t kMeasured = 2000;

// The ages of kMeasured quotes of one working day, from the youngest.
std::vector<Nanoseconds> AgesOfADay() {
  DialogWishes wishes = StreamingWishes({"MSFT", "IBM", "CSCO", "INTC", "ORCL", "DELL"},
                                        {"Last", "LastVolume", "Time", "Charts"});
  for (const auto& setting : {DialogWishes::Setting{"RowsLimit", "100"},
                              {"BuildCharts", "1"},
                              {"ChartStyle", "Blue"},
                              {"ChartPoints", "20"}})
    wishes.settings.push_back(setting);
  NotedDay day(std::move(wishes), kRate);
  day.RunUntil([&] { return day.Ages().size() >= kMeasured; });
  day.day().Stop();
  std::vector<Nanoseconds> ages = day.Ages();
  std::ranges::sort(ages);
  return ages;
}

void Age(benchmark::State& state, double part) {
  for (auto _ : state) {
    const auto ages = AgesOfADay();
    const auto place = static_cast<std::size_t>(static_cast<double>(ages.size() - 1) * part);
    state.counters["ns_per_item"] = static_cast<double>(ages[place].count());
  }
}
BENCHMARK_CAPTURE(Age, p50, 0.50)->Name("day/age/p50")->Iterations(1);
BENCHMARK_CAPTURE(Age, p99, 0.99)->Name("day/age/p99")->Iterations(1);

constexpr int kHistories = 100;
constexpr std::int32_t kRowsOfAHistory = 2000;
constexpr int kSaves = 3;

void FillHistories(NotedDay& day) {
  for (const std::string& ticker : day.tickers()) {
    VariantArray rows(1, kRowsOfAHistory, 1, 3);
    for (std::int32_t row = 1; row <= kRowsOfAHistory; ++row) {
      rows(row, 1) = Variant(28.35 + row * 0.01);
      rows(row, 2) = Variant(row * 100);
      rows(row, 3) = Variant(0.35 + row * 0.0001);
    }
    day.document()
        .Application()
        ->Worksheets()
        ->Item("Quotes_Vertical(" + ticker + ")")
        ->Range("A3")
        ->Resize(kRowsOfAHistory, 3)
        ->Value(std::move(rows));
  }
}

// The oldest quote of a day whose workbook is saved every second, or as often as it can be.
void OldestWhileSaving(benchmark::State& state) {
  for (auto _ : state) {
    std::vector<std::string> tickers;
    for (int i = 0; i < kHistories; ++i) tickers.push_back("T" + std::to_string(i));
    DialogWishes wishes = StreamingWishes(std::move(tickers), {"Last", "LastVolume", "Time"});
    wishes.settings.push_back({"RowsLimit", "0"});
    NotedDay day(std::move(wishes), kRate);
    FillHistories(day);
    int begun = 0;
    app::WorkbookKeeper keeper(
        day.loop(), day.document(), day.folder().Path() / "day.xlsx", [&] { ++begun; },
        [](const std::string&) {});
    keeper.SaveAtIntervals(std::chrono::seconds(1));
    day.RunUntil([&] { return begun > kSaves; });
    if (!keeper.State().starts_with("saved ")) state.SkipWithError(keeper.State().c_str());
    const auto oldest = std::ranges::max_element(day.Ages());
    state.counters["ns_per_item"] = static_cast<double>(oldest->count());
    state.counters["quotes"] = static_cast<double>(day.Ages().size());
    day.day().Stop();
  }
}
BENCHMARK(OldestWhileSaving)->Name("day/age/max")->Iterations(1);

}  // namespace
}  // namespace mirelo

BENCHMARK_MAIN();
