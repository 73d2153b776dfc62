#pragma once

#include <cstdint>
#include <string_view>

#include "diagnostics/routine.h"
#include "forms/grid.h"

namespace mirelo {

// The ticker grid's columns. With vertical tables the fields start here; a ticker's tick cells lie to the
// right of it.
inline constexpr std::int32_t kFirstField = 2;
inline constexpr const char* kTickerHeader = "Ticker";
inline constexpr const char* kChartHeader = "Charts (Last & Volume)";  // the last column, while charts are on
inline constexpr const char* kLastHeader = "Last";
inline constexpr const char* kLastVolumeHeader = "LastVolume";

// What a tick cell holds; an empty one is not ticked either.
inline constexpr const char* kTicked = "-1";
inline constexpr const char* kUnticked = "0";
// Whether the tables take a cell for ticked: in words counts as well.
constexpr bool IsTickText(std::string_view cell) { return cell == kTicked || cell == "True"; }

inline constexpr std::int32_t kNoColumn = -1;

// The first field with this header, whatever its case; kNoColumn when there is none. Its statements are the
// calling routine's.
std::int32_t FindField(Frame& frame, const forms::Grid& grid, std::string_view header);

// The fields that a chart is made of, where the grid has them.
struct ChartFields {
  std::int32_t last = kNoColumn;
  std::int32_t last_volume = kNoColumn;
  bool Complete() const { return last != kNoColumn && last_volume != kNoColumn; }
};
ChartFields FindChartFields(Frame& frame, const forms::Grid& grid);

// Whether the column has this header, whatever its case.
bool IsHeaderOf(const forms::Grid& grid, std::int32_t col, std::string_view header);

}  // namespace mirelo
