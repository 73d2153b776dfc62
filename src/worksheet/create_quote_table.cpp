// The quote table on its worksheet, as the dialog's values ask for it: the frame of it, that is, since the
// macros write the quotes.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "automation/number.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/known_setting.h"
#include "core/message_box.h"
#include "core/setting_names.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "dialog/grid_columns.h"
#include "dialog/styles.h"
#include "host/desktop.h"
#include "host/excel/application.h"
#include "host/excel/border.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "worksheet/color_schemes.h"
#include "worksheet/column_formats.h"
#include "worksheet/quote_table.h"

namespace mirelo {

using host::excel::Range;
using host::excel::Worksheet;

namespace {

constexpr const char* kNoTickers = "Tickers list is empty.";

constexpr std::int32_t kFrameColor = 16;
constexpr std::int32_t kLineColor = 15;

}  // namespace

// The table while it is built. The statements are those of save_settings_and_create_table.
struct frmMirelo::QuoteTableRun {
  Frame& frame;
  frmMirelo& form;
  const std::vector<std::string>& colors;
  const std::string& decimal_format;

  // Comma lists of the tickers with ticked fields, and of their rows in the grid; empty for none.
  std::string vertical_tickers = {};
  std::string vertical_rows = {};
  std::shared_ptr<Worksheet> table = nullptr;
  std::int32_t row_limit = 0;
  Variant names = {};  // of the columns; an array, unless there are none

  void Run();
  void StoreLists();
  void ListVerticalTables();
  void FindOrAddTable();
  void ReadNames();
  void WriteHeaders();
  void DeleteStaleRows();
  void WriteTickers();
  void FormatColumns();
  void DrawLines();
  void DrawLine(Range* cells, host::excel::XlBordersIndex index, host::excel::XlBorderWeight weight,
                std::int32_t color);
  void BuildCharts();

  Worksheet& Table() const { return Referred(table.get()); }
  std::int32_t LastName() const { return std::as_const(names).AsArray().UBound(); }
  std::string Name(std::int32_t index) const { return std::as_const(names).AsArray()(index).ToText(); }
  // From the first cell's address to a cell, counted from 1.
  std::shared_ptr<Range> UpTo(const std::string& first, std::int32_t row, std::int32_t column) const {
    return Table().Range(first, Table().Cells(row, column)->Address());
  }
  // Read again before each part of the style.
  bool HasStyle() {
    return frame.test([&] { return form.ComStyle.Text() != kNoStyle; });
  }
  std::string StatusCaption() const;
};

bool frmMirelo::CreateQuoteTable(Frame& frame, const std::vector<std::string>& colors,
                                 const std::string& decimal_format) {
  if (frame.test([&] { return FG.Rows() < 2; })) {
    STEP(ShowMessage(kNoTickers, host::Desktop::kExclamation));
    return false;
  }
  QuoteTableRun{frame, *this, colors, decimal_format}.Run();
  return true;
}

void frmMirelo::QuoteTableRun::Run() {
  forms::Grid& FG = form.FG;
  bool updating = false;
  std::int32_t unused = 0;
  StoreLists();
  STEP(updating = form.Excel().ScreenUpdating());
  STEP(form.Excel().ScreenUpdating(false));
  ListVerticalTables();
  FindOrAddTable();
  if (!vertical_tickers.empty()) STEP(form.AddSheetsVerticalTables(vertical_tickers));
  STEP(table = form.Worksheets()->Item(kQuoteTable));
  STEP(form.GiveSheetLimits(Table().Name(), row_limit, unused));
  ReadNames();

  // A table that was wider loses its old columns.
  std::int32_t width = 0;
  STEP(width = LastName() + 1);
  if (form.PrevColumnCount_ >= 0 && form.PrevColumnCount_ > width) STEP(width = form.PrevColumnCount_);
  STEP(Table().Range(kFirstHeader)->Resize(FG.Rows(), width)->Clear());
  STEP(Table().Range(kStatusCell)->Value(StatusCaption()));
  STEP(Table().Range(kFirstHeader)->Resize(FG.Rows(), form.ListRight.ListCount())->Clear());

  WriteHeaders();
  DeleteStaleRows();
  WriteTickers();
  FormatColumns();
  if (HasStyle()) DrawLines();
  if (frame.test([&] { return form.chkVerTable.Value() == 1 && !vertical_tickers.empty(); })) {
    STEP(form.AddForSheetsVerticalTables(vertical_tickers, vertical_rows, colors));
  }
  if (frame.test([&] { return form.Setting("BuildCharts").EqualsNumber(1); })) BuildCharts();
  STEP(form.Excel().ScreenUpdating(updating));
}

void frmMirelo::QuoteTableRun::StoreLists() {
  STEP(form.Store().SaveSetting(catalogue::kSettings, "ListLeft", Variant(Join(form.ListLeft.Items(), ","))));
  STEP(form.Store().SaveSetting(catalogue::kSettings, "ListRight",
                                Variant(Join(form.ListRight.Items(), ","))));
}

void frmMirelo::QuoteTableRun::ListVerticalTables() {
  const forms::Grid& FG = form.FG;
  std::vector<std::string> tickers;
  std::vector<std::string> rows;
  if (frame.test([&] { return form.chkVerTable.Value() == 1; })) {
    for (const std::int32_t row : frame.loop([&] { return Bounds{1, FG.Rows() - 1}; })) {
      for (const std::int32_t col : frame.loop([&] { return Bounds{kFirstField, FG.Cols() - 1}; })) {
        if (frame.test([&] { return IsTickText(FG.TextMatrix(row, col)); })) {
          STEP(tickers.push_back(FG.TextMatrix(row, form.TickerCol_)));
          STEP(rows.push_back(std::to_string(row)));
          break;
        }
      }
    }
  }
  STEP(vertical_tickers = Join(tickers, ","));
  STEP(vertical_rows = Join(rows, ","));
}

void frmMirelo::QuoteTableRun::FindOrAddTable() {
  bool found = false;
  for (const std::int32_t i : frame.loop([&] { return Bounds{1, form.Worksheets()->Count()}; })) {
    if (frame.test([&] { return form.Worksheets()->Item(i)->Name() == kQuoteTable; })) STEP(found = true);
  }
  if (found) return;
  STEP(table = form.Worksheets()->Add());
  STEP(Table().Name(kQuoteTable));
}

void frmMirelo::QuoteTableRun::ReadNames() {
  for (const std::int32_t i : frame.loop([&] { return Bounds{0, form.ListRight.ListCount() - 1}; })) {
    STEP(mPush(names, form.ListRight.List(i)));
  }
}

std::string frmMirelo::QuoteTableRun::StatusCaption() const {
  if (form.chkUpdOrNot.Value() == 0) return std::string(kSnapshotMode) + "( " + kUpdateOnce + " )";
  if (Val(form.txtSec.Text()) == 0) {
    return std::string(kStreamingMode) + "( " + std::string(Trim(form.ComQuoteSource.Text())) + " )";
  }
  return std::string(kSnapshotMode) + "( " + form.txtSec.Text() + " " + kSecondsUnit + ")";
}

void frmMirelo::QuoteTableRun::WriteHeaders() {
  for (const std::int32_t i : frame.loop([&] { return Bounds{0, LastName()}; })) {
    STEP(Table().Cells(kHeaderRow, i + 1)->Value(Name(i)));
  }
  if (!HasStyle()) return;
  std::shared_ptr<Range> headers;
  STEP(headers = UpTo(kFirstHeader, kHeaderRow, LastName() + 1));
  STEP(Referred(headers.get()).Font()->ColorIndex(ColorOf(colors, SchemePart::HeaderFont)));
  STEP(Referred(headers.get()).Interior()->ColorIndex(ColorOf(colors, SchemePart::HeaderFill)));
  STEP(Referred(headers.get()).Font()->Bold(true));
  STEP(Referred(headers.get()).HorizontalAlignment(host::excel::xlHAlignCenter));
}

// Rows of an old table below the new one, down to the next filled cell of the first column: where there is
// none, that is the foot of the sheet, and nothing goes.
void frmMirelo::QuoteTableRun::DeleteStaleRows() {
  const forms::Grid& FG = form.FG;
  std::int32_t last = 0;
  STEP(last = Table().Cells(FG.Rows() + 1, 1)->End(host::excel::xlDown)->Row());
  if (last < row_limit) {
    STEP(Table()
             .Rows(std::to_string(FG.Rows() + 2) + ":" + std::to_string(last))
             ->Delete(host::excel::xlShiftUp));
  }
}

void frmMirelo::QuoteTableRun::WriteTickers() {
  const forms::Grid& FG = form.FG;
  for (const std::int32_t row : frame.loop([&] { return Bounds{1, FG.Rows() - 1}; })) {
    STEP(Table().Cells(row + 2, 1)->Value(FG.TextMatrix(row, form.TickerCol_)));
    if (!HasStyle()) continue;
    const auto part = row % 2 == 0 ? SchemePart::EvenRowFill : SchemePart::OddRowFill;
    STEP(UpTo("A" + std::to_string(row + 2), row + 2, LastName() + 1)
             ->Interior()
             ->ColorIndex(ColorOf(colors, part)));
  }
}

void frmMirelo::QuoteTableRun::FormatColumns() {
  for (const std::int32_t i : frame.loop([&] { return Bounds{0, LastName()}; })) {
    std::shared_ptr<Range> column;
    STEP(column = UpTo(Table().Cells(kFirstTickerRow, i + 1)->Address(), form.FG.Rows() + 1, i + 1));
    std::string name;
    STEP(name = Name(i));
    FormatColumn(frame, column.get(), name, decimal_format);
  }
}

void frmMirelo::QuoteTableRun::DrawLines() {
  using namespace host::excel;
  std::shared_ptr<Range> cells;
  STEP(cells = UpTo(kFirstHeader, form.FG.Rows() + 1, LastName() + 1));
  for (const auto index : {xlEdgeLeft, xlEdgeTop, xlEdgeBottom, xlEdgeRight}) {
    DrawLine(cells.get(), index, xlMedium, kFrameColor);
  }
  for (const auto index : {xlInsideVertical, xlInsideHorizontal}) {
    DrawLine(cells.get(), index, xlThin, kLineColor);
  }
  STEP(Referred(cells.get()).EntireColumn()->AutoFit());
}

void frmMirelo::QuoteTableRun::DrawLine(Range* cells, host::excel::XlBordersIndex index,
                                        host::excel::XlBorderWeight weight, std::int32_t color) {
  STEP(Referred(cells).Borders(index)->LineStyle(host::excel::xlContinuous));
  STEP(Referred(cells).Borders(index)->Weight(weight));
  STEP(Referred(cells).Borders(index)->ColorIndex(color));
}

// For the tickers whose last cell is ticked; with none of them, too.
void frmMirelo::QuoteTableRun::BuildCharts() {
  const forms::Grid& FG = form.FG;
  Variant tickers;
  std::int32_t charts = 0;
  STEP(charts = FG.Cols() - 1);
  for (const std::int32_t row : frame.loop([&] { return Bounds{1, FG.Rows() - 1}; })) {
    if (frame.test([&] { return FG.TextMatrix(row, charts) == kTicked; })) {
      STEP(Arr_Push(tickers, FG.TextMatrix(row, form.TickerCol_), 0));
    }
  }
  STEP(form.Build_Charts(tickers));
}

}  // namespace mirelo
