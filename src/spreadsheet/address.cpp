#include "spreadsheet/address.h"

#include <algorithm>

namespace mirelo::spreadsheet {

namespace {

// One end of an address; a part that is absent is 0.
struct Corner {
  std::int32_t row = 0;
  std::int32_t column = 0;
};

constexpr bool IsLetter(char c) { return ('a' <= c && c <= 'z') || ('A' <= c && c <= 'Z'); }
constexpr bool IsDigit(char c) { return '0' <= c && c <= '9'; }

void Skip(std::string_view& text, char c) {
  if (!text.empty() && text.front() == c) text.remove_prefix(1);
}

std::int32_t TakeColumn(std::string_view& text) {
  std::int32_t column = 0;
  for (; !text.empty() && IsLetter(text.front()) && column <= kColumns; text.remove_prefix(1)) {
    column = column * 26 + (text.front() & 0x1F);  // both cases of a letter end in its place in the alphabet
  }
  return column;
}

std::int32_t TakeRow(std::string_view& text) {
  std::int32_t row = 0;
  for (; !text.empty() && IsDigit(text.front()) && row <= kRows; text.remove_prefix(1)) {
    row = row * 10 + (text.front() - '0');
  }
  return row;
}

std::optional<Corner> ParseCorner(std::string_view text) {
  Corner corner;
  Skip(text, '$');
  corner.column = TakeColumn(text);
  if (corner.column != 0) Skip(text, '$');
  corner.row = TakeRow(text);
  if (!text.empty() || (corner.row == 0 && corner.column == 0)) return std::nullopt;
  return corner;
}

std::string Mark(bool absolute) { return absolute ? "$" : ""; }

}  // namespace

std::string ColumnName(std::int32_t column) {
  std::string name;
  for (; column > 0; column = (column - 1) / 26) name.push_back(static_cast<char>('A' + (column - 1) % 26));
  std::reverse(name.begin(), name.end());
  return name;
}

std::optional<Area> ParseAddress(std::string_view text) {
  const std::size_t colon = text.find(':');
  const bool is_single = colon == std::string_view::npos;
  const auto first = ParseCorner(text.substr(0, colon));
  const auto second = is_single ? first : ParseCorner(text.substr(colon + 1));
  if (!first || !second) return std::nullopt;

  Area area{first->row, first->column, second->row, second->column};
  if (area.first_row == 0 && area.last_row == 0 && !is_single) {  // A:C
    area.first_row = 1;
    area.last_row = kRows;
  } else if (area.first_column == 0 && area.last_column == 0 && !is_single) {  // 3:5
    area.first_column = 1;
    area.last_column = kColumns;
  }
  if (area.first_row > area.last_row) std::swap(area.first_row, area.last_row);
  if (area.first_column > area.last_column) std::swap(area.first_column, area.last_column);
  if (!area.IsOnSheet()) return std::nullopt;  // a part that is still 0 is off the sheet, too
  return area;
}

std::optional<CellPlace> ParseCellName(std::string_view text) {
  const std::int32_t column = TakeColumn(text);
  const std::int32_t row = TakeRow(text);
  if (!text.empty() || !Area::Cell(row, column).IsOnSheet()) return std::nullopt;
  return CellPlace{row, column};
}

std::string CellName(std::int32_t row, std::int32_t column) {
  return ColumnName(column) + std::to_string(row);
}

std::string AddressText(const Area& area, bool row_absolute, bool column_absolute) {
  const auto row = [&](std::int32_t number) { return Mark(row_absolute) + std::to_string(number); };
  const auto column = [&](std::int32_t number) { return Mark(column_absolute) + ColumnName(number); };

  if (area.IsWholeRows()) return row(area.first_row) + ":" + row(area.last_row);
  if (area.IsWholeColumns()) return column(area.first_column) + ":" + column(area.last_column);
  std::string first = column(area.first_column) + row(area.first_row);
  if (area.Cells() == 1) return first;
  return first + ":" + column(area.last_column) + row(area.last_row);
}

}  // namespace mirelo::spreadsheet
