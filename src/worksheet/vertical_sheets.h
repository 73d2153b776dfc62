#pragma once

#include <cstdint>
#include <string>

#include "dialog/grid_columns.h"

namespace mirelo {

// A vertical table: the sheet of one ticker, known by its name. "Ticker:" in A1 tells that it was set up; the
// ticker stands in B1, the fields in row 2, and the history, which the macros append, from row 3 on. A
// comment on the headers "Last" and "LastVolume" with the text kChartMark tells that charts are wanted; there
// is no other record of it.
inline constexpr const char* kSetUpCell = "A1";
inline constexpr const char* kSetUpMark = "Ticker:";
inline constexpr const char* kTickerCell = "B1";
inline constexpr const char* kFirstFieldCell = "A2";
inline constexpr std::int32_t kFirstHistoryRow = 3;
inline constexpr const char* kChartMark = kChartHeader;

// `prefix` is the setting UserVerticalSheet: what stands in front of "(ticker)".
inline std::string VerticalSheetName(const std::string& prefix, const std::string& ticker) {
  return prefix + "(" + ticker + ")";
}

}  // namespace mirelo
