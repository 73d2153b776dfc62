#pragma once

#include <cstdint>
#include <string_view>

#include "quotetracker/random.h"

namespace mirelo::quotetracker {

// When a fault strikes. As text: "" each time, "3" each third time, "25%" by chance, one time in four.
class FaultRule {
 public:
  FaultRule() = default;

  static FaultRule Always() { return EveryNth(1); }
  static FaultRule EveryNth(std::uint64_t n);  // n is at least 1
  // `share` from 0 to 1; the same seed strikes the same times.
  static FaultRule ByChance(double share, std::uint64_t seed);

  // Raises std::invalid_argument with an explanation for other text.
  static FaultRule Parse(std::string_view text, std::uint64_t seed);

  // Counts one occasion and says whether the fault strikes at it. A rule made without arguments never
  // strikes.
  bool Strikes();

 private:
  std::uint64_t every_ = 0;
  std::uint64_t occasions_ = 0;
  double share_ = 0;
  Random random_{0};
};

}  // namespace mirelo::quotetracker
