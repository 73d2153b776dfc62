#pragma once

#include <com/sun/star/chart/XChartDocument.hpp>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/properties.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::calc {

// The names that lines have among the properties of a chart's parts.
struct LineNames {
  std::string_view style;
  std::string_view color;
  std::string_view width;
  std::string_view dashes;
};
inline constexpr LineNames kOwnLine{"LineStyle", "LineColor", "LineWidth", "LineDashName"};
// Of a series whose points are markers on a line, and of one of columns.
inline constexpr LineNames kSeriesLine{"LineStyle", "Color", "LineWidth", "LineDashName"};
inline constexpr LineNames kColumnLine{"BorderStyle", "BorderColor", "BorderWidth", "BorderDashName"};

// A line that somebody set, or none. `automatic` is its colour where it has none of its own.
void PaintLine(const Reference<css::chart::XChartDocument>& chart, const Properties& part,
               const LineNames& names, const spreadsheet::ChartLine& line, spreadsheet::Color automatic);
void PaintFill(const Reference<css::chart::XChartDocument>& chart, const Properties& part,
               const spreadsheet::ChartFill& fill);

// Resets these properties of a part to the office's defaults.
void PaintAsTheOfficeDoes(const Properties& part, const std::vector<std::string_view>& names);

}  // namespace mirelo::calc
