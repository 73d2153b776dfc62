#include "adapters/workbook/xlsx/sheet_writer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "adapters/workbook/model/sheet_formats.h"
#include "adapters/workbook/xlsx/comment_writer.h"
#include "adapters/workbook/xlsx/condition_writer.h"
#include "adapters/workbook/xlsx/text_escapes.h"
#include "adapters/workbook/xlsx/writer_error.h"

namespace mirelo::workbook {

namespace {

constexpr std::int32_t kBandRows = 1024;
constexpr StyleId kNoStyle = ~StyleId{0};

// The writer counts rows and columns from 0.
lxw_row_t RowOf(std::int32_t row) { return static_cast<lxw_row_t>(row - 1); }
lxw_col_t ColumnOf(std::int32_t column) { return static_cast<lxw_col_t>(column - 1); }

class SheetWriter {
 public:
  SheetWriter(const Sheet& sheet, const ToldStyles& told, lxw_worksheet* worksheet, FormatWriter& formats)
      : sheet_(sheet), worksheet_(worksheet), formats_(formats), told_(told), layers_(told.styles) {
    for (const auto& rows : layers_.rows()) row_styles_.Set(rows.first, rows.last, rows.style);
  }

  void Write() {
    WriteColumns();
    for (std::int32_t first = 1; first <= kRows; first += kBandRows) WriteBand(first);
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

  // The writer may let go of a row once a later one comes, so all of a row is told at once; the cells lie in
  // columns, and a band of rows at a time is turned.
  void WriteBand(std::int32_t first_row) {
    const Area band{first_row, 1, first_row + kBandRows - 1, kColumns};
    GatherRows(band);
    GatherCells(band);
    GatherComments(band);
    for (std::size_t i = first_used_; i < end_used_; ++i) {
      WriteRow(first_row + static_cast<std::int32_t>(i), rows_[i]);
      rows_[i].Reset();
    }
    first_used_ = rows_.size();
    end_used_ = 0;
  }

  void GatherRows(const Area& band) {
    const auto lay = [&](std::int32_t first, std::int32_t last, auto&& change) {
      for (std::int32_t row = std::max(first, band.first_row); row <= std::min(last, band.last_row); ++row)
        change(RowAt(band, row));
    };
    row_styles_.ForEach(band.first_row, band.last_row,
                        [&](std::int32_t first, std::int32_t last, StyleId style) {
                          if (style != kNoStyle) lay(first, last, [&](Row& row) { row.style = style; });
                        });
    sheet_.heights.ForEach(band.first_row, band.last_row,
                           [&](std::int32_t first, std::int32_t last, const RowHeight& height) {
                             if (height != RowHeight())
                               lay(first, last, [&](Row& row) { row.height = height; });
                           });
  }

  void GatherCells(const Area& band) {
    sheet_.cells.ForEach(band, [&](std::int32_t row, std::int32_t column, const CellValue& value) {
      RowAt(band, row).cells.push_back({column, sheet_.styles.At(row, column), &value});
    });
    for (const CellPlace& last : told_.lasts) {
      if (last.row >= band.first_row && last.row <= band.last_row)
        RowAt(band, last.row)
            .cells.push_back({last.column, sheet_.styles.At(last.row, last.column), nullptr});
    }
    layers_.ForEachException(band.first_row, band.last_row, [&](const Area& area, StyleId style) {
      for (std::int32_t column = area.first_column; column <= area.last_column; ++column) {
        for (std::int32_t row = area.first_row; row <= area.last_row; ++row) {
          if (!sheet_.cells.IsFilled(row, column)) RowAt(band, row).cells.push_back({column, style, nullptr});
        }
      }
    });
  }

  void GatherComments(const Area& band) {
    sheet_.comments.ForEach(band, [&](std::int32_t row, std::int32_t column, const Comment& comment) {
      RowAt(band, row).comments.push_back({column, &comment});
    });
  }

  struct Cell {
    std::int32_t column;
    StyleId style;
    const CellValue* value;  // null for one that is empty but formatted
  };
  struct Row {
    StyleId style = kNoStyle;
    RowHeight height;
    std::vector<Cell> cells;
    std::vector<std::pair<std::int32_t, const Comment*>> comments;  // with their columns

    // Keeps the vectors' memory.
    void Reset() {
      style = kNoStyle;
      height = {};
      cells.clear();
      comments.clear();
    }
  };
  Row& RowAt(const Area& band, std::int32_t row) {
    const auto index = static_cast<std::size_t>(row - band.first_row);
    first_used_ = std::min(first_used_, index);
    end_used_ = std::max(end_used_, index + 1);
    return rows_[index];
  }

  void WriteRow(std::int32_t number, const Row& row) {
    if (row.style != kNoStyle || row.height != RowHeight()) WriteRowFormat(number, row);
    for (const Cell& cell : row.cells) WriteCell(number, cell);
    for (const auto& [column, comment] : row.comments) WriteComment(number, column, *comment, worksheet_);
  }

  void WriteRowFormat(std::int32_t number, const Row& row) {
    lxw_row_col_options options{};
    options.hidden = row.height.hidden ? LXW_TRUE : LXW_FALSE;
    CheckWriter(worksheet_set_row_opt(worksheet_, RowOf(number),
                                      row.height.points > 0 ? row.height.points : LXW_DEF_ROW_HEIGHT,
                                      row.style == kNoStyle ? nullptr : formats_.For(row.style), &options));
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

  const Sheet& sheet_;
  lxw_worksheet* worksheet_;
  FormatWriter& formats_;
  const ToldStyles& told_;
  SheetFormats layers_;
  RunMap<StyleId> row_styles_{kRows, kNoStyle};
  std::vector<Row> rows_ = std::vector<Row>(kBandRows);  // of the band being written
  std::size_t first_used_ = kBandRows;  // those of its rows that hold something lie from here
  std::size_t end_used_ = 0;            // to before here
};

}  // namespace

void WriteSheet(const Sheet& sheet, const ToldStyles& told, lxw_worksheet* worksheet, FormatWriter& formats) {
  SheetWriter(sheet, told, worksheet, formats).Write();
}

}  // namespace mirelo::workbook
