#pragma once

#include <cstdint>
#include <span>

namespace mirelo::utf8 {

// Letters in a row that have their other case at one distance: `first`, and each `step` further, up to
// `last`.
struct CaseRun {
  char32_t first;
  char32_t last;
  char32_t step;
  std::int32_t distance;
};

// The simple case pairs of Unicode 15 behind ASCII, in the order of the letters. They are a table of ours, as
// the machine's own know other letters on each machine, and some know none.
std::span<const CaseRun> RunsToUpper();
std::span<const CaseRun> RunsToLower();

}  // namespace mirelo::utf8
