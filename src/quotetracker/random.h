#pragma once

#include <cstdint>
#include <string_view>

#include "quotetracker/ascii.h"

namespace mirelo::quotetracker {

// Chance that is the same on every machine for the same seed: a counter stepped by the golden ratio, its bits
// mixed (SplitMix64, Steele, Lea and Flood 2014). Eight bytes, so that each ticker can hold its own.
class Random {
 public:
  explicit constexpr Random(std::uint64_t seed) : state_(seed) {}

  constexpr std::uint64_t Next() {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31);
  }

  // From 0 up to, not including, 1.
  constexpr double Unit() { return static_cast<double>(Next() >> 11) * 0x1.0p-53; }

  // From `low` to `high`, both included; `low` is not above `high`.
  constexpr std::int64_t Between(std::int64_t low, std::int64_t high) {
    const auto span = static_cast<std::uint64_t>(high - low) + 1;
    return low + static_cast<std::int64_t>(Next() % span);
  }

  // About normal, mean 0 and deviation 1, never beyond 6: the sum of twelve uniform numbers.
  constexpr double Normal() {
    double sum = -6;
    for (int i = 0; i < 12; ++i) sum += Unit();
    return sum;
  }

 private:
  std::uint64_t state_;
};

// A seed for one name out of a common seed, without regard to ASCII case (FNV-1a over the upper-case bytes).
constexpr std::uint64_t SeedFor(std::uint64_t seed, std::string_view name) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const char c : name) hash = (hash ^ static_cast<unsigned char>(ToUpper(c))) * 0x100000001B3U;
  return Random(hash ^ (seed * 0x9E3779B97F4A7C15U)).Next();
}

}  // namespace mirelo::quotetracker
