#include "adapters/workbook/xlsx/series_reader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/chart_names.h"
#include "adapters/workbook/xlsx/chart_words.h"
#include "adapters/workbook/xlsx/style_names.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/area.h"
#include "spreadsheet/limits.h"

namespace mirelo::workbook {

namespace {

constexpr std::string_view kPointMarkers = "shapes and sizes of single markers";
constexpr std::string_view kColumnEffects = "colours of columns below zero";

bool HasShape(pugi::xml_node marker) { return Child(marker, "symbol") || Child(marker, "size"); }

std::int32_t SymbolOf(pugi::xml_node marker) {
  return NumberOf(kMarkerNames, Attribute(Child(marker, "symbol"), "val"))
      .value_or(host::excel::xlMarkerStyleAutomatic);
}

std::int32_t SizeOf(pugi::xml_node marker, std::int32_t if_absent) {
  const auto size = Number<std::int32_t>(Child(marker, "size"), "val");
  return size ? std::clamp(*size, kLeastMarker, kGreatestMarker) : if_absent;
}

}  // namespace

SeriesReader::Result SeriesReader::Read(pugi::xml_node node) {
  budget_.TakeSeries(part_);
  Result result;
  ChartSeries& series = result.series;
  const pugi::xml_node shape = Child(node, "spPr");
  series.line = shapes_.Line(shape);
  series.shadow = shapes_.Shadow(shape);
  if (kind_.has_markers) {
    ReadMarker(Child(node, "marker"), series);
    series.smooth = Flag(Child(node, "smooth"), "val", static_cast<bool>(Child(node, "smooth")));
  } else {
    ReadColumns(node, series);
  }
  ReadPoints(node, series);
  result.formula = FormulaOf(Child(node, "val"));
  ReportSeries(node, losses_);
  return result;
}

void SeriesReader::ReadMarker(pugi::xml_node marker, ChartSeries& series) const {
  const pugi::xml_node shape = Child(marker, "spPr");
  series.marker = SymbolOf(marker);
  if (series.marker == host::excel::xlMarkerStyleAutomatic && !has_markers_)
    series.marker = host::excel::xlMarkerStyleNone;
  losses_.AddIf(Attribute(Child(marker, "symbol"), "val") == "picture", "pictures as markers");
  series.marker_size = SizeOf(marker, series.marker_size);
  series.background = shapes_.PlainFill(shape);
  series.foreground = shapes_.Edge(shape);
  shapes_.RefuseEffects(shape);
}

// Columns and, in an extension, what they will have when they become a line.
void SeriesReader::ReadColumns(pugi::xml_node node, ChartSeries& series) const {
  series.background = shapes_.PlainFill(Child(node, "spPr"));
  losses_.AddIf(Flag(Child(node, "invertIfNegative"), "val", false), kColumnEffects);
  const pugi::xml_node more = OwnExtension(node);
  const pugi::xml_node marker = Child(more, "marker");
  series.marker = SymbolOf(marker);
  series.marker_size = SizeOf(marker, series.marker_size);
  series.foreground = shapes_.Edge(Child(marker, "spPr"));
  series.smooth = Flag(Child(more, "smooth"), "val", false);
}

void SeriesReader::ReadPoints(pugi::xml_node node, ChartSeries& series) {
  ForEachChild(node, "dPt", [&](pugi::xml_node child) {
    const auto number = Number<std::int32_t>(Child(child, "idx"), "val");
    if (!number || *number < 0 || *number >= kRows)
      throw Damaged(part_, "a point of a chart has no number, or one beyond all cells");
    const auto index = static_cast<std::size_t>(*number);
    if (index >= series.points.size()) {
      budget_.TakeChartPoints(index + 1 - series.points.size(), part_);
      series.points.resize(index + 1);
    }
    ReadPoint(child, series, series.points[index]);
  });
  while (!series.points.empty() && series.points.back() == ChartPoint()) series.points.pop_back();
}

void SeriesReader::ReadPoint(pugi::xml_node node, const ChartSeries& series, ChartPoint& point) const {
  const pugi::xml_node shape = Child(node, "spPr");
  const pugi::xml_node marker = Child(node, "marker");
  point.line = shapes_.Line(shape);
  shapes_.RefuseEffects(shape);
  ReportPoint(node, losses_);
  if (!kind_.has_markers) {
    point.background = shapes_.PlainFill(shape);
    point.foreground = shapes_.Edge(Child(OwnExtension(node), "marker"));
    return;
  }
  point.background = shapes_.PlainFill(Child(marker, "spPr"));
  point.foreground = shapes_.Edge(Child(marker, "spPr"));
  shapes_.RefuseEffects(Child(marker, "spPr"));
  losses_.AddIf(HasShape(marker) && (SymbolOf(marker) != series.marker ||
                                     SizeOf(marker, series.marker_size) != series.marker_size),
                kPointMarkers);
}

std::string SeriesReader::FormulaOf(pugi::xml_node values) const {
  std::string formula = Text(Child(Child(values, "numRef"), "f"));
  losses_.AddIf(formula.empty() && values, "values that lie in no cells");
  return formula;
}

}  // namespace mirelo::workbook
