// What a day's histories take of the memory.

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "day/noted_day.h"
#include "day/streaming_wishes.h"

namespace mirelo {
namespace {

constexpr double kRateOfGrowth = 20'000;
constexpr std::int64_t kRowsBefore = 20'000;
constexpr std::int64_t kRowsOfGrowth = 100'000;
constexpr double kBytesOfANumber = 8;

double ResidentBytes() {
  ::malloc_trim(0);
  std::ifstream in("/proc/self/statm");
  std::int64_t total = 0;
  std::int64_t resident = 0;
  in >> total >> resident;
  return static_cast<double>(resident * ::sysconf(_SC_PAGESIZE));
}

// The growth by each row of a history, and the bytes of the row's values.
void GrowthOfADay(benchmark::State& state, bool is_bare) {
  const std::vector<std::string> fields{"Last", "Bid", "Ask", "Change", "Volume", "LastVolume"};
  for (auto _ : state) {
    if (is_bare) {
      state.counters["bytes"] = kBytesOfANumber * static_cast<double>(fields.size());
      continue;
    }
    DialogWishes wishes = StreamingWishes({"MSFT", "IBM"}, fields);
    wishes.settings.push_back({"RowsLimit", "0"});
    NotedDay day(std::move(wishes), kRateOfGrowth);
    day.RunUntil([&] { return day.day().Written() >= kRowsBefore; });
    const std::int64_t rows = day.day().Written();
    const double before = ResidentBytes();
    day.RunUntil([&] { return day.day().Written() >= rows + kRowsOfGrowth; });
    const double grown = ResidentBytes() - before;
    state.counters["bytes"] = grown / static_cast<double>(day.day().Written() - rows);
    day.day().Stop();
  }
}
BENCHMARK_CAPTURE(GrowthOfADay, day, false)->Name("day/row")->Iterations(1);
BENCHMARK_CAPTURE(GrowthOfADay, values, true)->Name("day/bare_row")->Iterations(1);

}  // namespace
}  // namespace mirelo
