#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "spreadsheet/charts/chart_kind.h"

namespace mirelo::calc {

// How the office draws a kind of chart: the service of its diagram, by which the diagram's kind is read back
// as well.
struct OfficeKind {
  const spreadsheet::ChartKind* kind;
  std::string_view diagram;
};

inline constexpr std::array kOfficeKinds{
    OfficeKind{&spreadsheet::kColumnKind, "com.sun.star.chart.BarDiagram"},
    OfficeKind{&spreadsheet::kLineKind, "com.sun.star.chart.LineDiagram"},
};

// Kinds that share a diagram would be read back as the first of them: then a row has to say more of it.
consteval bool HasEachKindByADiagramOfItsOwn() {
  return std::ranges::all_of(spreadsheet::kChartKinds, [](const spreadsheet::ChartKind* kind) {
    const auto row = std::ranges::find(kOfficeKinds, kind, &OfficeKind::kind);
    return row != kOfficeKinds.end() &&
           std::ranges::count(kOfficeKinds, row->diagram, &OfficeKind::diagram) == 1;
  });
}
static_assert(kOfficeKinds.size() == spreadsheet::kChartKinds.size() && HasEachKindByADiagramOfItsOwn());

}  // namespace mirelo::calc
