#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "host/excel/constants.h"

namespace mirelo::spreadsheet {

// A kind of chart: its name for clients, its words in the file format, and which of a series' settings it
// shows. Each chart points to its kind; the ones below are all that there are, and a new kind is one more of
// them.
struct ChartKind {
  host::excel::XlChartType type;

  std::string_view group;      // the element that holds the series
  std::string_view direction;  // which way its columns stand, "barDir"; empty for a kind that has none
  std::string_view grouping;   // how its series stand to one another
  std::string_view detail;     // the element behind the series that is always written, and its value
  std::string_view detail_value;

  // Whether points are markers on a line, which may be smooth, or areas that are filled.
  bool has_markers;
};

inline constexpr ChartKind kColumnKind{
    .type = host::excel::xlColumnClustered,
    .group = "barChart",
    .direction = "col",
    .grouping = "clustered",
    .detail = "gapWidth",
    .detail_value = "150",
    .has_markers = false,
};

inline constexpr ChartKind kLineKind{
    .type = host::excel::xlLineMarkers,
    .group = "lineChart",
    .direction = "",
    .grouping = "standard",
    .detail = "marker",
    .detail_value = "1",
    .has_markers = true,
};

inline constexpr std::array kChartKinds{&kColumnKind, &kLineKind};

// A name or a value that is missing would be written as an element without it.
static_assert(std::ranges::all_of(kChartKinds, [](const ChartKind* kind) {
  return !kind->group.empty() && !kind->grouping.empty() && !kind->detail.empty() &&
         !kind->detail_value.empty();
}));

// Null for a type that cannot be drawn.
constexpr const ChartKind* KindOf(host::excel::XlChartType type) {
  for (const ChartKind* kind : kChartKinds) {
    if (kind->type == type) return kind;
  }
  return nullptr;
}

}  // namespace mirelo::spreadsheet
