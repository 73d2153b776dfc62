#include "adapters/workbook/xlsx/sheet_writer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "adapters/workbook/errors.h"
#include "adapters/workbook/model/sheet_formats.h"
#include "adapters/workbook/xlsx/comment_writer.h"
#include "adapters/workbook/xlsx/condition_writer.h"
#include "adapters/workbook/xlsx/text_escapes.h"
#include "adapters/workbook/xlsx/writer_error.h"

namespace mirelo::workbook {

namespace {

constexpr std::int64_t kMostFormattedBlanks = std::int64_t{1} << 24;
constexpr std::int32_t kBandRows = 1024;

// The writer counts rows and columns from 0.
lxw_row_t RowOf(std::int32_t row) { return static_cast<lxw_row_t>(row - 1); }
lxw_col_t ColumnOf(std::int32_t column) { return static_cast<lxw_col_t>(column - 1); }

class SheetWriter {
 public:
  SheetWriter(const Sheet& sheet, lxw_worksheet* worksheet, FormatWriter& formats)
      : sheet_(sheet), worksheet_(worksheet), formats_(formats), layers_(sheet.styles) {}

  void Write() {
    if (layers_.CountExceptions() > kMostFormattedBlanks) {
      throw Refused("Too many empty cells of the sheet \"" + sheet_.name + "\" are formatted to be saved.");
    }
    WriteColumns();
    WriteRows();
    WriteCells();
    WriteComments(sheet_.comments, worksheet_);
    WriteConditions(sheet_.conditions, worksheet_, formats_);
    WriteSelection();
    if (sheet_.frozen_rows > 0 || sheet_.frozen_columns > 0) {
      worksheet_freeze_panes(worksheet_, RowOf(sheet_.frozen_rows + 1), ColumnOf(sheet_.frozen_columns + 1));
    }
  }

 private:
  void WriteColumns() {
    for (const auto& columns : layers_.columns()) {
      sheet_.widths.ForEach(
          columns.first, columns.last, [&](std::int32_t first, std::int32_t last, const ColumnWidth& width) {
            if (width == ColumnWidth() && columns.style == kDefaultStyle) return;
            lxw_row_col_options options{};
            options.hidden = width.hidden ? LXW_TRUE : LXW_FALSE;
            CheckWriter(worksheet_set_column_pixels_opt(
                worksheet_, ColumnOf(first), ColumnOf(last), static_cast<std::uint32_t>(width.pixels),
                columns.style == kDefaultStyle ? nullptr : formats_.For(columns.style), &options));
          });
    }
  }

  // Heights and formats of rows, told together since the writer takes both in one call.
  void WriteRows() {
    RunMap<StyleId> styles(kRows, kNoStyle);
    for (const auto& rows : layers_.rows()) styles.Set(rows.first, rows.last, rows.style);
    styles.ForEach(1, kRows, [&](std::int32_t first, std::int32_t last, StyleId style) {
      sheet_.heights.ForEach(first, last, [&](std::int32_t from, std::int32_t to, const RowHeight& height) {
        if (style == kNoStyle && height == RowHeight()) return;
        for (std::int32_t row = from; row <= to; ++row) WriteRow(row, height, style);
      });
    });
  }

  void WriteRow(std::int32_t row, const RowHeight& height, StyleId style) {
    lxw_row_col_options options{};
    options.hidden = height.hidden ? LXW_TRUE : LXW_FALSE;
    CheckWriter(worksheet_set_row_opt(worksheet_, RowOf(row),
                                      height.points > 0 ? height.points : LXW_DEF_ROW_HEIGHT,
                                      style == kNoStyle ? nullptr : formats_.For(style), &options));
  }

  // Row after row, which the writer takes fastest, though the cells lie in columns: a band of rows at a time
  // is turned.
  void WriteCells() {
    std::vector<std::vector<Cell>> rows(static_cast<std::size_t>(kBandRows));
    for (std::int32_t first = 1; first <= kRows; first += kBandRows) {
      const Area band{first, 1, first + kBandRows - 1, kColumns};
      const auto add = [&](std::int32_t row, const Cell& cell) {
        rows[static_cast<std::size_t>(row - first)].push_back(cell);
      };
      sheet_.cells.ForEach(band, [&](std::int32_t row, std::int32_t column, const CellValue& value) {
        add(row, {column, sheet_.styles.At(row, column), &value});
      });
      layers_.ForEachException(band.first_row, band.last_row,
                               [&](const Area& area, StyleId style) { AddBlanks(area, style, add); });
      for (std::size_t i = 0; i < rows.size(); ++i) {
        for (const Cell& cell : rows[i]) WriteCell(first + static_cast<std::int32_t>(i), cell);
        rows[i].clear();
      }
    }
  }

  // The writer makes the first corner the active cell. One amid the selection gives way to a corner.
  void WriteSelection() {
    const auto& [first_row, first_column, last_row, last_column] = sheet_.selection;
    const bool is_lower = sheet_.active_cell.row == last_row;
    const bool is_right = sheet_.active_cell.column == last_column;
    worksheet_set_selection(
        worksheet_, RowOf(is_lower ? last_row : first_row), ColumnOf(is_right ? last_column : first_column),
        RowOf(is_lower ? first_row : last_row), ColumnOf(is_right ? first_column : last_column));
  }

  struct Cell {
    std::int32_t column;
    StyleId style;
    const CellValue* value;  // null for one that is empty but formatted
  };

  template <class Add>
  void AddBlanks(const Area& area, StyleId style, Add&& add) const {
    for (std::int32_t column = area.first_column; column <= area.last_column; ++column) {
      for (std::int32_t row = area.first_row; row <= area.last_row; ++row) {
        if (!sheet_.cells.IsFilled(row, column)) add(row, {column, style, nullptr});
      }
    }
  }

  void WriteCell(std::int32_t row_number, const Cell& cell) {
    const lxw_row_t row = RowOf(row_number);
    const lxw_col_t column = ColumnOf(cell.column);
    // Always told, as a cell without one takes that of its row or column.
    lxw_format* format = formats_.For(cell.style);
    if (cell.value == nullptr) {
      CheckWriter(worksheet_write_blank(worksheet_, row, column, format));
    } else if (const double* number = cell.value->IfNumber()) {
      CheckWriter(worksheet_write_number(worksheet_, row, column, *number, format));
    } else if (const std::string* text = cell.value->IfText()) {
      WriteText(row, column, *text, format);
    } else if (const bool* boolean = cell.value->IfBoolean()) {
      CheckWriter(worksheet_write_boolean(worksheet_, row, column, *boolean ? 1 : 0, format));
    } else if (const CellError* error = cell.value->IfError()) {
      WriteError(row, column, std::string(ErrorText(*error)), format);
    }
  }

  void WriteText(lxw_row_t row, lxw_col_t column, const std::string& text, lxw_format* format) {
    const bool may_look_escaped = text.find("_x") != std::string::npos;
    CheckWriter(worksheet_write_string(
        worksheet_, row, column, may_look_escaped ? EscapeLookalikes(text).c_str() : text.c_str(), format));
  }

  // The writer has no error constants; a formula that is nothing but the error computes to it.
  void WriteError(lxw_row_t row, lxw_col_t column, const std::string& error, lxw_format* format) {
    CheckWriter(
        worksheet_write_formula_str(worksheet_, row, column, ("=" + error).c_str(), format, error.c_str()));
  }

  static constexpr StyleId kNoStyle = ~StyleId{0};

  const Sheet& sheet_;
  lxw_worksheet* worksheet_;
  FormatWriter& formats_;
  SheetFormats layers_;
};

}  // namespace

void WriteSheet(const Sheet& sheet, lxw_worksheet* worksheet, FormatWriter& formats) {
  SheetWriter(sheet, worksheet, formats).Write();
}

}  // namespace mirelo::workbook
