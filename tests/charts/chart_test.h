#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "host/excel/application.h"
#include "host/excel/border.h"
#include "host/excel/chart.h"
#include "host/excel/chart_parts.h"
#include "host/excel/charts.h"
#include "host/excel/range.h"
#include "host/excel/series.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo::testing {

// Charts as the spreadsheet offers them, without the routines that are tested.

inline void FillColumn(host::excel::Worksheet& sheet, std::int32_t column, const std::vector<double>& values,
                       std::int32_t first_row = 3) {
  for (const double value : values) sheet.Cells(first_row++, column)->Value(value);
}

// A chart of a column, with a title unless that is empty.
inline std::shared_ptr<host::excel::Chart> NewChartOf(host::excel::Application& excel,
                                                      host::excel::Worksheet& sheet,
                                                      const std::string& source, const std::string& title,
                                                      host::excel::XlChartType type) {
  auto chart = excel.ActiveWorkbook()->Charts()->Add();
  chart->ChartType(type);
  chart->SetSourceData(*sheet.Range(source), host::excel::xlColumns);
  chart = chart->Location(host::excel::xlLocationAsObject, sheet.Name());
  if (!title.empty()) {
    chart->HasTitle(true);
    chart->ChartTitle()->Text(title);
  }
  return chart;
}

// The charts that lie on a sheet, from the first made to the last, and their shapes.
inline std::vector<std::shared_ptr<host::excel::Shape>> ChartShapesOn(host::excel::Worksheet& sheet) {
  std::vector<std::shared_ptr<host::excel::Shape>> shapes;
  const auto list = sheet.Shapes();
  for (std::int32_t i = 1; i <= list->Count(); ++i) {
    if (list->Item(i)->Type() == host::excel::msoChart) shapes.push_back(list->Item(i));
  }
  return shapes;
}
inline std::vector<std::shared_ptr<host::excel::Chart>> ChartsOn(host::excel::Worksheet& sheet) {
  std::vector<std::shared_ptr<host::excel::Chart>> charts;
  for (const auto& shape : ChartShapesOn(sheet)) charts.push_back(shape->Chart());
  return charts;
}
inline std::vector<std::string> TitlesOn(host::excel::Worksheet& sheet) {
  std::vector<std::string> titles;
  for (const auto& chart : ChartsOn(sheet)) {
    titles.push_back(chart->HasTitle() ? chart->ChartTitle()->Text() : "");
  }
  return titles;
}

using RowRange = std::pair<std::int32_t, std::int32_t>;

// The first and the last row that a chart of this column shows, of the sheet's first rows.
inline RowRange RowsShown(host::excel::Chart& chart, host::excel::Worksheet& sheet, std::int32_t column) {
  constexpr std::int32_t kRows = 400;
  const auto cells = sheet.Cells(1, column)->Resize(kRows, 1);
  const Variant contents = cells->Value();
  for (std::int32_t row = 1; row <= kRows; ++row) sheet.Cells(row, column)->Value(row);
  const Variant values = chart.SeriesCollection(1)->Values();
  cells->Value(contents);
  const VariantArray& rows = values.AsArray();
  return {rows(rows.LBound()).ToInt32(), rows(rows.UBound()).ToInt32()};
}

struct PointLook {
  std::int32_t line;
  std::int32_t ground;  // of the marker
  std::int32_t edge;
  friend bool operator==(const PointLook&, const PointLook&) = default;
};
inline void PrintTo(const PointLook& look, std::ostream* out) {
  *out << look.line << " " << look.ground << " " << look.edge;
}

inline constexpr PointLook kRise{10, 4, 10};
inline constexpr PointLook kFall{53, 3, 53};
inline constexpr PointLook kStay{16, 15, 16};

inline PointLook LookOf(host::excel::Series& series) {
  return {series.Border()->ColorIndex().ToInt32(), series.MarkerBackgroundColorIndex(),
          series.MarkerForegroundColorIndex()};
}
inline std::vector<PointLook> PointsOf(host::excel::Chart& chart) {
  const auto series = chart.SeriesCollection(1);
  const Variant values = series->Values();
  std::vector<PointLook> points;
  for (std::int32_t i = 1; i <= values.AsArray().UBound(); ++i) {
    const auto point = series->Points(i);
    points.push_back({point->Border()->ColorIndex().ToInt32(), point->MarkerBackgroundColorIndex(),
                      point->MarkerForegroundColorIndex()});
  }
  return points;
}

}  // namespace mirelo::testing
