// The charts of the vertical tables, made anew.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "automation/number.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "charts/chart_rows.h"
#include "charts/worksheet_of.h"
#include "core/cMirelo.h"
#include "core/known_setting.h"
#include "core/message_box.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "dialog/grid_columns.h"
#include "dialog/styles.h"
#include "host/excel/application.h"
#include "host/excel/chart.h"
#include "host/excel/range.h"
#include "host/excel/selectable.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "worksheet/cell_text.h"
#include "worksheet/quote_table.h"
#include "worksheet/vertical_sheets.h"

namespace mirelo {

using host::excel::Chart;
using host::excel::Selectable;
using host::excel::Shape;
using host::excel::Workbook;
using host::excel::Worksheet;

namespace {

constexpr const char* kRedraw = "Redraw existing charts?";
constexpr const char* kLabels = "B1";
constexpr std::int16_t kHeight = 76;
constexpr double kWidthOfPoint = 10.0;
// What the rows are named by.
constexpr std::int32_t kNameColumn = 1;

// As they are now: deleting one changes the sheet's own list.
std::vector<std::shared_ptr<Shape>> ShapesOf(Worksheet& sheet) {
  const auto list = sheet.Shapes();
  std::vector<std::shared_ptr<Shape>> shapes;
  for (std::int32_t i = 1; i <= list->Count(); ++i) shapes.push_back(list->Item(i));
  return shapes;
}

}  // namespace

// One call of Build_Charts.
struct frmMirelo::ChartsRun {
  Frame& frame;
  frmMirelo& form;

  std::string style = {};
  std::int16_t points = 0;
  std::int16_t add_y_axis = 0;
  std::int16_t color_points = 0;
  std::int16_t grey_out = 0;
  std::shared_ptr<Workbook> book = nullptr;
  std::int32_t row_limit = 0;
  bool redraw = false;  // answered with Yes

  // Of the ticker whose turn it is.
  std::shared_ptr<Worksheet> sheet = nullptr;
  std::string last_cell = {};
  std::int32_t last_column = kNoColumn;  // of the price
  std::int32_t volume_column = kNoColumn;
  std::int16_t place_column = 0;

  void Run(const Variant& tickers);
  void ReadSettings();
  void SelectCharts(Variant& names);
  void GoBack(const std::shared_ptr<Selectable>& earlier);
  bool DeleteCharts(Variant& names);
  void FindColumns();
  void BuildChart(const char* title, std::int32_t column, host::excel::XlChartType type);

  Worksheet& Sheet() const { return Referred(sheet.get()); }
  std::int32_t EndOf(std::int32_t column) const {
    return Sheet().Cells(kHeaderRow, column)->End(host::excel::xlDown)->Row();
  }
  std::string Rows(std::int32_t first, std::int32_t last, std::int32_t column) const {
    return Sheet().Range(*Sheet().Cells(first, column), *Sheet().Cells(last, column))->Address();
  }
};

void frmMirelo::Build_Charts(const Variant& tickers) {
  Routine("Mirelo.frmMirelo.Build_Charts", [&](Frame& frame) {
    if (frame.test([&] { return chkVerTable.Value() != 1 || tickers.IsEmpty(); })) return frame.pop();
    ChartsRun{frame, *this}.Run(tickers);
  });
}

void frmMirelo::ChartsRun::Run(const Variant& tickers) {
  std::int32_t unused = 0;
  ReadSettings();
  STEP(book = form.Excel().ActiveWorkbook());
  STEP(form.GiveSheetLimits(kQuoteTable, row_limit, unused));
  for (const std::int32_t i : frame.loop([&] {
         return Bounds{tickers.AsArray().LBound(), tickers.AsArray().UBound()};
       })) {
    Variant names;  // of the charts that are there
    STEP(sheet = WorksheetOf(Referred(book.get())
                                 .Sheets(VerticalSheetName(form.Facade().UserVerticalSheet(),
                                                           tickers.AsArray()(i).ToText()))));
    SelectCharts(names);
    if (frame.test([&] { return Arr_Count(names) > 0; })) {
      if (!DeleteCharts(names)) return;
    }
    STEP(last_cell = form.GotoLastCell(Sheet().Name(), kFirstFieldCell));
    FindColumns();
    STEP(place_column = RoundToInt16(Sheet().Range(last_cell)->Column() + 1));
    BuildChart(kLastHeader, last_column, host::excel::xlLineMarkers);
    BuildChart(kLastVolumeHeader, volume_column, host::excel::xlColumnClustered);
  }
  frame.pop();
}

void frmMirelo::ChartsRun::ReadSettings() {
  STEP(style = form.Setting("ChartStyle").ToText());
  STEP(points = form.Setting("ChartPoints").ToInt16());
  STEP(add_y_axis = form.Setting("AddYAxis").ToInt16());
  STEP(color_points = form.Setting("ColorPoints").ToInt16());
  STEP(grey_out = NewChartsGreyOut().In(form.Store()).ToInt16());
}

void frmMirelo::ChartsRun::SelectCharts(Variant& names) {
  std::shared_ptr<Selectable> earlier;
  std::vector<std::shared_ptr<Shape>> shapes;
  frame.ignore_failures();
  STEP(earlier = form.Excel().Selection());
  frame.report_failures();
  STEP(shapes = ShapesOf(Sheet()));
  for (const auto& shape : shapes) {
    if (frame.test([&] { return shape->Type() == host::excel::msoChart; })) {
      STEP(shape->Select());
      STEP(Arr_Push(names, shape->Name(), 0));
    }
  }
  GoBack(earlier);
}

// The selection may lie on a sheet that is not in front any more, and then stays as it is.
void frmMirelo::ChartsRun::GoBack(const std::shared_ptr<Selectable>& earlier) {
  frame.ignore_failures();
  if (!earlier) {
    STEP(Sheet().Range(kFirstFieldCell)->Select());
  } else {
    STEP(earlier->Select());
  }
  frame.report_failures();
}

// Asks once; a Yes stands for all further tickers. False for a No: that exit leaves the routine's name on the
// call stack, as those behind other messages do.
bool frmMirelo::ChartsRun::DeleteCharts(Variant& names) {
  if (!redraw) {
    STEP(redraw = Confirm(kRedraw));
    if (!redraw) return false;
  }
  STEP(names = Variant());
  std::vector<std::shared_ptr<Shape>> shapes;
  STEP(shapes = ShapesOf(Sheet()));
  for (const auto& shape : shapes) {
    if (frame.test([&] { return shape->Type() == host::excel::msoChart; })) {
      STEP(shape->Select());
      STEP(shape->Delete());
    }
  }
  return true;
}

void frmMirelo::ChartsRun::FindColumns() {
  Variant headers;
  last_column = kNoColumn;
  volume_column = kNoColumn;
  STEP(const auto end = Sheet().Range(kFirstFieldCell)->End(host::excel::xlToRight)->Address(false, false);
       headers = Sheet().Range(std::string(kFirstFieldCell) + ":" + end)->Value());
  const auto names = [&]() -> const VariantArray& { return std::as_const(headers).AsArray(); };
  for (const std::int32_t column : frame.loop([&] { return Bounds{names().LBound(2), names().UBound(2)}; })) {
    const auto is_header = [&](const char* name) {
      return frame.test([&] { return EqualText(TextOf(names()(1, column)), name); });
    };
    if (is_header(kLastHeader)) STEP(last_column = column);
    if (is_header(kLastVolumeHeader)) STEP(volume_column = column);
    if (last_column != kNoColumn && volume_column != kNoColumn) break;
  }
}

// A field that the dialog offers, of which the table has a column.
void frmMirelo::ChartsRun::BuildChart(const char* title, std::int32_t column, host::excel::XlChartType type) {
  if (!frame.test(
          [&] { return Arr_Search(VariantArray::OfTexts(Split(form.VerticalFields_, ",")), title) >= 0; })) {
    return;
  }
  if (column == kNoColumn) return;
  std::int32_t first = 0;
  std::int32_t last = 0;
  std::string source;
  std::string named_by;
  std::string name;
  std::shared_ptr<Chart> chart;
  STEP(last = LastRowOfChart(EndOf(column), row_limit, points));
  STEP(first = FirstRowOfNewChart(EndOf(column), row_limit, points));
  STEP(source = Rows(first, last, column));
  STEP(named_by = Rows(first, last, kNameColumn));
  STEP(chart =
           form.Add_Chart(title, Sheet().Name(), source, named_by, kLabels, false, add_y_axis != 0, type));
  STEP(form.Move_And_Resize_Chart(chart, name, kHeight, kWidthOfPoint, place_column, points));
  if (style != kNoStyle) STEP(form.Facade().Change_Colors(chart, 0, 0, style, color_points, grey_out));
}

}  // namespace mirelo
