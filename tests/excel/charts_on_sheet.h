#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "conformance.h"
#include "host/excel/border.h"
#include "host/excel/chart.h"
#include "host/excel/chart_object.h"
#include "host/excel/chart_parts.h"
#include "host/excel/charts.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "host/excel/series.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/window.h"

namespace mirelo::testing {

// A test that makes charts. A new chart is 360 by 216 points large.
class ChartedSheet : public Spreadsheets {
 protected:
  using ChartPtr = std::shared_ptr<host::excel::Chart>;
  using ShapePtr = std::shared_ptr<host::excel::Shape>;

  // A new chart sheet that plots these cells.
  ChartPtr AddChartSheet(std::string_view source = "B3:B7") {
    const auto chart = application->Charts()->Add();
    chart->SetSourceData(*Range(source), host::excel::xlColumns);
    return chart;
  }
  // A new chart on the sheet.
  ChartPtr AddChart(std::string_view source = "B3:B7") {
    return AddChartSheet(source)->Location(host::excel::xlLocationAsObject, sheet->Name());
  }
  // The worksheet that a chart lies on; null where it lies on none.
  static std::shared_ptr<host::excel::Worksheet> SheetOf(const ChartPtr& chart) {
    const auto holder = std::dynamic_pointer_cast<host::excel::ChartObject>(chart->Parent());
    return holder == nullptr ? nullptr : holder->Parent();
  }
  std::shared_ptr<host::excel::Shapes> Shapes() { return sheet->Shapes(); }
  // The chart's shape, being the last of its sheet.
  ShapePtr ShapeOf(const ChartPtr& chart) { return Shapes()->Item(chart->Index()); }
  // Numbers 10, 20, ... down a column.
  void CountByTens(std::string_view first_cell, std::int32_t count) {
    for (std::int32_t i = 1; i <= count; ++i) Range(first_cell)->Item(i, 1)->Value(10.0 * i);
  }
};

}  // namespace mirelo::testing
