// Looking a ticker up without regard to case, against hashing and comparing its bytes as they are.

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <string_view>

#include "automation/text.h"

namespace mirelo {
namespace {

const std::string kSymbol = "GOOG.L";
const std::string kSameSymbol = "goog.l";

void HashIgnoringCase(benchmark::State& state) {
  std::string_view symbol = kSymbol;
  for (auto _ : state) {
    benchmark::DoNotOptimize(symbol);
    benchmark::DoNotOptimize(HashText(symbol));
  }
}
BENCHMARK(HashIgnoringCase)->Name("text/hash");

void HashBytes(benchmark::State& state) {
  std::string_view symbol = kSymbol;
  for (auto _ : state) {
    benchmark::DoNotOptimize(symbol);
    benchmark::DoNotOptimize(std::hash<std::string_view>()(symbol));
  }
}
BENCHMARK(HashBytes)->Name("text/hash_bytes");

void EqualIgnoringCase(benchmark::State& state) {
  std::string_view symbol = kSymbol;
  for (auto _ : state) {
    benchmark::DoNotOptimize(symbol);
    benchmark::DoNotOptimize(EqualText(symbol, kSameSymbol));
  }
}
BENCHMARK(EqualIgnoringCase)->Name("text/equal");

void EqualBytes(benchmark::State& state) {
  std::string_view symbol = kSymbol;
  for (auto _ : state) {
    benchmark::DoNotOptimize(symbol);
    benchmark::DoNotOptimize(symbol == std::string_view(kSymbol));
  }
}
BENCHMARK(EqualBytes)->Name("text/equal_bytes");

}  // namespace
}  // namespace mirelo
