// The ticks of the grid, as the vertical sheets tell them.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "automation/text.h"
#include "automation/variant.h"
#include "core/cMirelo.h"
#include "diagnostics/routine.h"
#include "diagnostics/skipping_frame.h"
#include "dialog/frmMirelo.h"
#include "dialog/grid_columns.h"
#include "host/excel/comment.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "worksheet/cell_text.h"
#include "worksheet/vertical_sheets.h"

namespace mirelo {

using forms::Grid;
using host::excel::Worksheet;

namespace {

// Among all columns but the fixed one, that of the tickers included.
std::int32_t ColumnOf(const Grid& FG, const std::string& header) {
  for (std::int32_t col = 1; col < FG.Cols(); ++col) {
    if (IsHeaderOf(FG, col, header)) return col;
  }
  return kNoColumn;
}

// Ticks in a row of the grid the fields that the sheet has. Its statements are ChkFGVerticalTables's.
void TickFieldsOf(Frame& frame, Grid& FG, Worksheet& sheet, std::int32_t row, std::int32_t charts) {
  std::string last;
  STEP(last = sheet.Range(kFirstFieldCell)->End(host::excel::xlToRight)->Address(false, false));
  if (EqualText(last, kFirstFieldCell)) return;

  Variant headers;
  STEP(headers = sheet.Range(std::string(kFirstFieldCell) + ":" + last)->Value());
  const auto fields = [&]() -> const VariantArray& { return std::as_const(headers).AsArray(); };
  for (const std::int32_t i : frame.loop([&] { return Bounds{fields().LBound(2), fields().UBound(2)}; })) {
    std::int32_t col = kNoColumn;
    STEP(col = ColumnOf(FG, TextOf(fields()(1, i))));
    if (col == kNoColumn) continue;
    STEP(FG.TextMatrix(row, col, kTicked));
    // The mark is looked for one column further right: fields of charts tell of each other.
    std::string comment;
    STEP(comment = frmMirelo::GivComment(
             sheet, sheet.Range(kFirstFieldCell)->Cells(1, i + 1)->Address(false, false)));
    if (EqualText(comment, kChartMark) && charts != kNoColumn) STEP(FG.TextMatrix(row, charts, kTicked));
  }
}

}  // namespace

void frmMirelo::ChkFGVerticalTables() {
  Routine("Mirelo.frmMirelo.ChkFGVerticalTables", [&](Frame& frame) {
    frame.ignore_failures();
    std::string prefix;
    STEP(prefix = Facade().UserVerticalSheet());
    const std::int32_t charts = chkBuildCharts.Value() == 1 ? FindField(frame, FG, kChartHeader) : kNoColumn;

    for (const std::int32_t row : frame.loop([&] { return Bounds{1, FG.Rows() - 1}; })) {
      std::string ticker;
      std::shared_ptr<Worksheet> sheet;
      STEP(ticker = FG.TextMatrix(row, TickerCol_));
      if (charts != kNoColumn) STEP(FG.Cell(Grid::kCellPicture, row, charts, ImageChart.Picture()));
      STEP(sheet = Worksheets()->Item(VerticalSheetName(prefix, ticker)));
      if (sheet) TickFieldsOf(frame, FG, *sheet, row, charts);
    }
    frame.pop();
  });
}

std::string frmMirelo::GivComment(Worksheet& sheet, const std::string& cell) {
  std::string text;
  SkippingFailures(
      [&](SkippingFrame& frame) { STEP(text = Referred(sheet.Range(cell)->Comment().get()).Text()); });
  return text;
}

}  // namespace mirelo
