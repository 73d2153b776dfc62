// The charts of a vertical table follow it while the macros append rows.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "charts/chart_rows.h"
#include "core/cMirelo.h"
#include "dialog/grid_columns.h"
#include "dialog/styles.h"
#include "host/excel/application.h"
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
#include "worksheet/cell_text.h"
#include "worksheet/vertical_sheets.h"

namespace mirelo {

using host::excel::Chart;
using host::excel::Range;
using host::excel::Sheet;
using host::excel::Worksheet;

namespace {

constexpr std::int32_t kUpdatedHeaderRow = 2;

// Second indexes of the macros' array.
constexpr std::int32_t kFilledColumn = 1;
constexpr std::int32_t kChangeColumn = 2;

// The last row whose first column isn't empty; the first row when there is none. Error 9 without rows.
std::int32_t LastFilledRow(const VariantArray& rows) {
  if (rows.UBound() < rows.LBound()) throw Errors::SubscriptOutOfRange();
  std::int32_t row = rows.UBound();
  while (row > rows.LBound() && rows(row, kFilledColumn).IsEmpty()) --row;
  return row;
}

}  // namespace

// One call of Update_Charts.
struct cMirelo::ChartUpdateRun {
  // The statements of a routine that has no frame: their failures are its caller's, except from
  // ignore_failures() to raise_failures(), where one that fails is skipped.
  class BareFrame {
   public:
    template <class Statement>
    void step(Statement&& statement) {
      try {
        statement();
      } catch (...) {
        if (!ignoring_) throw;
      }
    }

    // Evaluates an If condition; when its failure is ignored the block is entered.
    template <class Condition>
    bool test(Condition&& condition) {
      bool holds = true;
      step([&] { holds = condition(); });
      return holds;
    }

    void ignore_failures() { ignoring_ = true; }
    void raise_failures() { ignoring_ = false; }

   private:
    bool ignoring_ = false;
  };

  cMirelo& facade;
  const std::shared_ptr<Worksheet>& table;
  const Variant& rows;
  std::int32_t points;
  const std::string& style;
  std::int16_t color_points;
  std::int16_t grey_out;

  BareFrame frame = {};
  std::shared_ptr<Sheet> front = nullptr;
  std::string front_name = {};
  std::shared_ptr<Range> cell = nullptr;  // selected on the table; null when that could not be had
  std::int32_t max_row = 0;
  std::int32_t max_column = 0;
  std::int32_t last_row = 0;  // of the macros' rows
  double earlier = 0;
  double current = 0;
  std::int32_t price_column = kNoColumn;
  std::int32_t volume_column = kNoColumn;

  void Run();
  void FindColumns();
  void UpdateCharts();
  void Update(const std::shared_ptr<Chart>& chart, std::int32_t column);
  void GoBack();

  host::excel::Application& Excel() const { return Referred(facade.excel_.get()); }
  Worksheet& Table() const { return Referred(table.get()); }
  const VariantArray& Rows() const { return rows.AsArray(); }
};

void cMirelo::Update_Charts(const std::shared_ptr<Worksheet>& Dest_Sheet, const Variant& Vert_Array,
                            std::int32_t ChartPoints, const std::string& ChartStyle, std::int16_t ColorPoints,
                            std::int16_t GreyOut) {
  ChartUpdateRun{*this, Dest_Sheet, Vert_Array, ChartPoints, ChartStyle, ColorPoints, GreyOut}.Run();
}

void cMirelo::GetSheetLimits(const std::string& SheetName, std::int32_t& MaxRow, std::int32_t& MaxColumn) {
  const auto book = Referred(excel_.get()).ActiveWorkbook();
  const auto sheet = Referred(book.get()).Worksheets()->Item(SheetName);
  // Nothing lies beyond the last used cell, so that from there on one arrives at the sheet's edges.
  const auto last = sheet->Cells(1, 1)->SpecialCells(host::excel::xlCellTypeLastCell);
  MaxRow = last->End(host::excel::xlDown)->Row() - 1;
  MaxColumn = last->End(host::excel::xlToRight)->Column();
}

void cMirelo::ChartUpdateRun::Run() {
  STEP(front = Excel().ActiveSheet());
  STEP(front_name = Referred(front.get()).Name());
  STEP(facade.GetSheetLimits(front_name, max_row, max_column));
  STEP(Table().Select());
  frame.ignore_failures();
  STEP(cell = Excel().ActiveCell());
  frame.raise_failures();
  STEP(last_row = LastFilledRow(Rows()));
  FindColumns();
  UpdateCharts();
  GoBack();
}

void cMirelo::ChartUpdateRun::FindColumns() {
  const auto end = Table().Range(kFirstFieldCell)->End(host::excel::xlToRight)->Address(false, false);
  const Variant headers = Table().Range(std::string(kFirstFieldCell) + ":" + end)->Value();
  if (headers.IsEmpty()) return;
  const VariantArray& names = headers.AsArray();
  for (std::int32_t column = names.LBound(2); column <= names.UBound(2); ++column) {
    const std::string name = TextOf(names(names.LBound(1), column));
    if (EqualText(name, kLastHeader)) price_column = column;
    if (EqualText(name, kLastVolumeHeader)) volume_column = column;
    if (price_column != kNoColumn && volume_column != kNoColumn) return;
  }
}

// Behind the first chart that was updated failures are ignored until the next chart, and behind the last one
// to the end.
void cMirelo::ChartUpdateRun::UpdateCharts() {
  const auto shapes = Table().Shapes();
  const std::int32_t count = shapes->Count();
  for (std::int32_t i = 1; i <= count; ++i) {
    std::shared_ptr<host::excel::Shape> shape;
    STEP(shape = shapes->Item(i));
    if (!frame.test([&] { return Referred(shape.get()).Type() == host::excel::msoChart; })) continue;

    frame.raise_failures();
    const std::shared_ptr<Chart> chart = Referred(shape.get()).Chart();
    if (!chart->HasTitle()) continue;
    const auto is_titled = [&](const char* title) {
      return frame.test([&] { return EqualText(chart->ChartTitle()->Characters()->Text(), title); });
    };
    if (is_titled(kLastHeader)) Update(chart, price_column);
    if (is_titled(kLastVolumeHeader)) Update(chart, volume_column);
  }
}

void cMirelo::ChartUpdateRun::Update(const std::shared_ptr<Chart>& chart, std::int32_t column) {
  std::int32_t end = 0;
  std::int32_t first = 0;
  std::int32_t last = 0;
  STEP(end = Table().Cells(kUpdatedHeaderRow, column)->End(host::excel::xlDown)->Row());
  STEP(last = LastRowOfChart(end, max_row, points));
  STEP(first = FirstRowOfUpdatedChart(end, max_row, points));

  frame.ignore_failures();
  STEP(chart->SeriesCollection(1)->Values(
      Table().Range(*Table().Cells(first, column), *Table().Cells(last, column))));
  if (style != kNoStyle) {
    STEP(earlier = last_row > 1 ? Rows()(last_row - 1, kChangeColumn).ToDouble() : 0);
    STEP(current = Rows()(last_row, kChangeColumn).ToDouble());
    frame.raise_failures();
    STEP(facade.Change_Colors(chart, current, earlier, style, color_points, grey_out));
    frame.ignore_failures();
  }
}

void cMirelo::ChartUpdateRun::GoBack() {
  host::excel::XlSheetType type{};
  STEP(type = Referred(front.get()).Type());
  if (type == host::excel::xlSheetChart) {
    STEP(Excel().Charts()->Item(front_name)->Select());
  } else if (type == host::excel::xlSheetWorksheet) {
    STEP(Referred(front.get()).Select());
    frame.ignore_failures();
    bool exists = false;
    STEP(Referred(cell.get()).Address(); exists = true);
    if (exists) STEP(cell->Select());
    frame.raise_failures();
  }
}

}  // namespace mirelo
