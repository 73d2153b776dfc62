#include "app/output/shown_cells.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "automation/text.h"
#include "automation/variant.h"
#include "automation/visible_text.h"
#include "host/excel/comment.h"
#include "host/excel/constants.h"
#include "host/excel/display_format.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"

namespace mirelo::app {

using namespace host::excel;
using terminal::Paint;
using terminal::Rgb;

namespace {

Rgb RgbOf(const Variant& color) {
  const std::int32_t number = color.ToInt32();
  return {static_cast<std::uint8_t>(number & 0xFF), static_cast<std::uint8_t>(number >> 8 & 0xFF),
          static_cast<std::uint8_t>(number >> 16 & 0xFF)};
}

// Letters that are black on no fill are left to the terminal, whose own ground may be black.
Paint PaintOf(DisplayFormat& look) {
  Paint paint;
  const auto font = look.Font();
  const auto interior = look.Interior();
  paint.bold = font->Bold().ToBoolean();
  if (interior->ColorIndex().ToInt32() != xlColorIndexNone) paint.ground = RgbOf(interior->Color());
  const Rgb letters = RgbOf(font->Color());
  if (paint.ground || letters != Rgb()) paint.letters = letters;
  return paint;
}

ShownCell::Side SideOf(std::int32_t alignment, const Variant& value) {
  switch (alignment) {
    case xlHAlignLeft:
    case xlHAlignFill:
    case xlHAlignJustify:
      return ShownCell::Side::Left;
    case xlHAlignRight:
      return ShownCell::Side::Right;
    case xlHAlignCenter:
    case xlHAlignCenterAcrossSelection:
    case xlHAlignDistributed:
      return ShownCell::Side::Middle;
    default:
      break;
  }
  if (value.IsText()) return ShownCell::Side::Left;
  return value.type() == Variant::Type::Boolean ? ShownCell::Side::Middle : ShownCell::Side::Right;
}

// Line ends and tabs of a cell are layout, for which a line has no room.
std::string InOneLine(const std::string& text) {
  std::string line = VisibleLines(text);
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c == '\n' || c == '\t'; }, ' ');
  return line;
}

ShownCell ReadCell(Range& cell) {
  ShownCell shown;
  shown.paint = PaintOf(*cell.DisplayFormat());
  shown.text = InOneLine(cell.Text());
  if (shown.text.empty()) return shown;
  const Variant value = cell.Value();
  shown.side = SideOf(cell.HorizontalAlignment().ToInt32(), value);
  shown.spills = value.IsText() && shown.side == ShownCell::Side::Left;
  return shown;
}

}  // namespace

ShownArea FilledArea(Worksheet& sheet) {
  const auto cells = sheet.Cells();
  const auto first = sheet.Cells(1, 1);
  const auto lowest = cells->Find("*", *first, xlByRows, xlPrevious);
  if (lowest == nullptr) return {};
  return {1, 1, lowest->Row(), cells->Find("*", *first, xlByColumns, xlPrevious)->Column()};
}

ShownArea AreaAt(Worksheet& sheet, const std::string& address) {
  const auto range = sheet.Range(address);
  ShownArea area{range->Row(), range->Column(), range->Row() + range->Rows()->Count() - 1,
                 range->Column() + range->Columns()->Count() - 1};
  const bool whole_columns = area.Rows() == sheet.Rows()->Count();
  const bool whole_rows = area.Columns() == sheet.Columns()->Count();
  if (!whole_columns && !whole_rows) return area;
  const ShownArea filled = FilledArea(sheet);
  if (whole_columns) area.last_row = std::min(area.last_row, filled.last_row);
  if (whole_rows) area.last_column = std::min(area.last_column, filled.last_column);
  return area;
}

ShownCells ReadCells(Worksheet& sheet, const ShownArea& area) {
  ShownCells cells{area.first_row, area.first_column, {}};
  for (std::int32_t row = area.first_row; row <= area.last_row; ++row) {
    auto& line = cells.rows.emplace_back();
    for (std::int32_t column = area.first_column; column <= area.last_column; ++column) {
      line.push_back(ReadCell(*sheet.Cells(row, column)));
    }
  }
  return cells;
}

std::vector<ShownComment> ReadComments(Worksheet& sheet, const ShownArea& area) {
  std::vector<ShownComment> comments;
  for (std::int32_t row = area.first_row; row <= area.last_row; ++row) {
    for (std::int32_t column = area.first_column; column <= area.last_column; ++column) {
      const auto comment = sheet.Cells(row, column)->Comment();
      if (comment == nullptr) continue;
      auto& shown = comments.emplace_back();
      shown.address = sheet.Cells(row, column)->Address(false, false);
      for (const std::string& line : Split(comment->Text(), "\n")) shown.lines.push_back(InOneLine(line));
    }
  }
  return comments;
}

std::string ColumnLetters(std::int32_t column) {
  std::string letters;
  for (; column > 0; column = (column - 1) / 26) {
    letters.insert(letters.begin(), static_cast<char>('A' + (column - 1) % 26));
  }
  return letters;
}

std::string AddressOf(const ShownArea& area) {
  return ColumnLetters(area.first_column) + std::to_string(area.first_row) + ':' +
         ColumnLetters(area.last_column) + std::to_string(area.last_row);
}

}  // namespace mirelo::app
