// The sheets of vertical tables: made, set up and formatted. A sheet that cannot be changed is left as it is,
// without a word.

#include "worksheet/vertical_sheets.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "automation/number.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "core/cMirelo.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "dialog/styles.h"
#include "host/excel/border.h"
#include "host/excel/comment.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/shape.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "worksheet/cell_text.h"
#include "worksheet/color_schemes.h"
#include "worksheet/column_formats.h"

namespace mirelo {

using host::excel::Range;
using host::excel::Worksheet;

namespace {

constexpr double kMarkHeight = 0.43;
constexpr double kMarkWidth = 1.48;

// How many rows of history are formatted.
constexpr std::int32_t kRowsWithoutLimit = 36000;
constexpr std::int32_t kRowsWithBadLimit = 20;

constexpr std::int32_t kHeaderLineColor = 15;

bool IsChartField(const std::string& name) {
  return EqualText(name, kLastHeader) || EqualText(name, kLastVolumeHeader);
}

}  // namespace

void frmMirelo::AddSheetsVerticalTables(const std::string& tickers) {
  Routine("Mirelo.frmMirelo.AddSheetsVerticalTables", [&](Frame& frame) {
    frame.ignore_failures();
    std::string prefix;
    STEP(prefix = Facade().UserVerticalSheet());
    for (const std::string& ticker : Split(tickers, ",")) {
      std::shared_ptr<Worksheet> sheet;
      STEP(sheet = Worksheets()->Item(VerticalSheetName(prefix, ticker)));
      if (!sheet) {
        STEP(sheet = Worksheets()->Add());
        STEP(Referred(sheet.get()).Name(VerticalSheetName(prefix, ticker)));
      }
    }
    frame.pop();
  });
}

// The sheet of one ticker while it is set up. The statements are those of AddForSheetsVerticalTables.
struct frmMirelo::VerticalSheetRun {
  Frame& frame;
  frmMirelo& form;
  const std::vector<std::string>& colors;
  const std::string& decimal_format;
  const std::string& ticker;
  std::int32_t row;                  // of the grid
  std::shared_ptr<Worksheet> sheet;  // null when there is none

  std::vector<std::string> fields = {};
  std::string mark = {};  // text of the mark on the fields of charts; empty for none

  void Run();
  void ReadTicks();
  bool HasTheFields();
  void ClearTable();
  void WriteFields();
  void LayMark(std::int32_t field);
  void FormatFields();
  std::int32_t RowsLimit() const;
  void ColorHeaders();

  std::shared_ptr<Range> Header(std::int32_t field) const {
    return Referred(sheet.get()).Range(kFirstFieldCell)->Cells(1, field + 1);
  }
  std::shared_ptr<host::excel::Shape> MarkShape(std::int32_t field) const {
    const auto comment = Header(field)->Comment();
    return Referred(comment.get()).Shape();
  }
  Bounds AllFields() const { return {0, static_cast<std::int32_t>(fields.size()) - 1}; }
  const std::string& Field(std::int32_t index) const { return fields[static_cast<std::size_t>(index)]; }
};

void frmMirelo::AddForSheetsVerticalTables(const std::string& tickers, const std::string& rows,
                                           const std::vector<std::string>& colors) {
  Routine("Mirelo.frmMirelo.AddForSheetsVerticalTables", [&](Frame& frame) {
    frame.ignore_failures();
    std::string decimal_format;
    std::string prefix;
    STEP(decimal_format = Facade().DecimalPlacesFormat());
    STEP(prefix = Facade().UserVerticalSheet());
    const std::vector<std::string> names = Split(tickers, ",");
    const std::vector<std::string> numbers = Split(rows, ",");
    for (std::size_t i = 0; i < names.size(); ++i) {
      VerticalSheetRun run{frame, *this, colors, decimal_format, names[i], 0, nullptr};
      STEP(run.row = Variant(numbers.at(i)).ToInt32());
      STEP(run.sheet = Worksheets()->Item(VerticalSheetName(prefix, names[i])));
      run.Run();
    }
    frame.pop();
  });
}

void frmMirelo::VerticalSheetRun::Run() {
  const bool set_up =
      frame.test([&] { return EqualText(TextOf(*Referred(sheet.get()).Range(kSetUpCell)), kSetUpMark); });
  if (!set_up) {
    STEP(Referred(sheet.get()).Range(kSetUpCell)->Value(kSetUpMark));
    STEP(Referred(sheet.get()).Range(kTickerCell)->Value(ticker));
  }
  ReadTicks();
  if (!set_up) {
    WriteFields();
  } else if (!HasTheFields()) {
    ClearTable();
    WriteFields();
  }
  FormatFields();
  if (frame.test([&] { return form.ComStyle.Text() != kNoStyle; })) ColorHeaders();
}

void frmMirelo::VerticalSheetRun::ReadTicks() {
  const forms::Grid& FG = form.FG;
  for (const std::int32_t col : frame.loop([&] { return Bounds{kFirstField, FG.Cols() - 1}; })) {
    if (frame.test(
            [&] { return IsTickText(FG.TextMatrix(row, col)) && !IsHeaderOf(FG, col, kChartHeader); })) {
      STEP(fields.push_back(FG.TextMatrix(0, col)));
    }
  }
  // The last column is taken for that of charts, whatever its header says.
  if (frame.test(
          [&] { return form.chkVerTable.Value() == 1 && IsTickText(FG.TextMatrix(row, FG.Cols() - 1)); })) {
    STEP(mark = kChartMark);
  }
}

// Whether the sheet's headers begin with the fields; as long as they do, the marks are laid on them. More
// headers behind them do no harm.
bool frmMirelo::VerticalSheetRun::HasTheFields() {
  for (const std::int32_t i : AllFields()) {
    if (frame.test([&] { return !EqualText(TextOf(*Header(i)), Field(i)); })) return false;
    if (IsChartField(Field(i))) LayMark(i);
  }
  return true;
}

// Takes away headers and history. The rows are counted from the first header, though their number is the
// sheet's, so that one more goes than is used.
void frmMirelo::VerticalSheetRun::ClearTable() {
  std::string last;
  std::int32_t last_row = 0;
  std::string end;
  STEP(last = form.GotoLastCell(Referred(sheet.get()).Name(), kFirstFieldCell));
  STEP(last_row = Referred(sheet.get()).Range(last)->Row());
  STEP(end = Referred(sheet.get())
                 .Range(kFirstFieldCell)
                 ->Cells(last_row, static_cast<std::int32_t>(fields.size()))
                 ->Address(false, false));
  STEP(Referred(sheet.get()).Range(std::string(kFirstFieldCell) + ":" + end)->Clear());
}

void frmMirelo::VerticalSheetRun::WriteFields() {
  for (const std::int32_t i : AllFields()) {
    STEP(Header(i)->Value(Field(i)));
    if (frame.test([&] { return IsChartField(TextOf(*Header(i))); })) LayMark(i);
  }
}

void frmMirelo::VerticalSheetRun::LayMark(std::int32_t field) {
  STEP(Header(field)->ClearComments());
  if (mark.empty()) return;
  STEP(Header(field)->AddComment(mark));
  STEP(MarkShape(field)->ScaleHeight(kMarkHeight, host::excel::msoFalse));
  STEP(MarkShape(field)->ScaleWidth(kMarkWidth, host::excel::msoFalse));
}

void frmMirelo::VerticalSheetRun::FormatFields() {
  std::int32_t rows = 0;
  STEP(rows = RowsLimit());
  for (const std::int32_t i : AllFields()) {
    std::shared_ptr<Range> column;
    STEP(const auto first = Referred(sheet.get()).Range("A2")->Cells(2, i + 1)->Address(false, false);
         const auto last = Referred(sheet.get()).Range("A3")->Cells(rows, i + 1)->Address(false, false);
         column = Referred(sheet.get()).Range(first, last));
    FormatColumn(frame, column.get(), Field(i), decimal_format);
  }
}

std::int32_t frmMirelo::VerticalSheetRun::RowsLimit() const {
  if (form.chkLimitRows.Value() == 0) return kRowsWithoutLimit;
  const double limit = Val(form.txtRows.Text());
  return limit > 0 ? RoundToInt32(limit) : kRowsWithBadLimit;
}

void frmMirelo::VerticalSheetRun::ColorHeaders() {
  std::shared_ptr<Range> headers;
  STEP(const auto last = Header(static_cast<std::int32_t>(fields.size()) - 1)->Address(false, false);
       headers = Referred(sheet.get()).Range(kFirstFieldCell, last));
  STEP(Referred(headers.get()).Font()->ColorIndex(ColorOf(colors, SchemePart::HeaderFont)));
  STEP(Referred(headers.get()).Interior()->ColorIndex(ColorOf(colors, SchemePart::HeaderFill)));
  STEP(Referred(headers.get()).Font()->Bold(true));
  STEP(Referred(headers.get()).HorizontalAlignment(host::excel::xlHAlignGeneral));
  for (const auto line : {host::excel::xlEdgeLeft, host::excel::xlEdgeTop, host::excel::xlEdgeBottom,
                          host::excel::xlEdgeRight, host::excel::xlInsideVertical}) {
    STEP(Referred(headers.get()).Borders(line)->LineStyle(host::excel::xlContinuous));
    STEP(Referred(headers.get()).Borders(line)->Weight(host::excel::xlThin));
    STEP(Referred(headers.get()).Borders(line)->ColorIndex(kHeaderLineColor));
  }
}

}  // namespace mirelo
