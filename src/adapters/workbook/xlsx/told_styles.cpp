#include "adapters/workbook/xlsx/told_styles.h"

#include <cstdint>
#include <optional>

namespace mirelo::workbook {

namespace {

// What is told of rows above such a format must be little beside what need not be told of its own.
constexpr std::int32_t kShortestLongRun = 100;
constexpr std::int32_t kRunToRowsAbove = 4;

struct Run {
  std::int32_t first;
  std::int32_t last;
  StyleId style;
};

// Whether empty cells of both are formatted alike. A height that fonts give to a row is part of it.
bool LookAlikeEmpty(const Style& a, const Style& b) {
  return a.fill == b.fill && a.border == b.border && a.font == b.font;
}

// The last format of a column but that of the rest of it, when it is a long one.
std::optional<Run> LongRunAboveTheRest(const StyleGrid::Rows& rows, const StyleTable& table) {
  std::optional<Run> above;
  std::optional<Run> rest;
  rows.ForEach(1, kRows, [&](std::int32_t first, std::int32_t last, StyleId style) {
    above = rest;
    rest = Run{first, last, style};
  });
  if (!above || rest->first == kRows) return std::nullopt;
  const std::int32_t length = above->last - above->first + 1;
  if (length < kShortestLongRun || length < (above->first - 1) * kRunToRowsAbove) return std::nullopt;
  if (!LookAlikeEmpty(table.Get(above->style), table.Get(rest->style))) return std::nullopt;
  return above;
}

bool IsEmptyFrom(const CellGrid& cells, std::int32_t row, std::int32_t column) {
  bool is_empty = true;
  cells.ForEach({row, column, kRows, column},
                [&](std::int32_t, std::int32_t, const CellValue&) { is_empty = false; });
  return is_empty;
}

}  // namespace

ToldStyles StylesToTell(const Sheet& sheet, const StyleTable& table) {
  ToldStyles told{sheet.styles, {}};
  sheet.styles.ForEachColumnRun(
      [&](std::int32_t first_column, std::int32_t last_column, const StyleGrid::Rows& rows) {
        const std::optional<Run> run = LongRunAboveTheRest(rows, table);
        if (!run) return;
        for (std::int32_t column = first_column; column <= last_column; ++column) {
          if (!IsEmptyFrom(sheet.cells, run->last, column)) continue;
          told.styles.Set({run->last + 2, column, kRows, column}, run->style);
          told.lasts.push_back({run->last, column});
        }
      });
  return told;
}

bool IsToldByItsEnd(const StyleGrid::Rows& rows, std::int32_t last, const StyleTable& table) {
  const std::optional<Run> run = LongRunAboveTheRest(rows, table);
  return run && run->last == last;
}

}  // namespace mirelo::workbook
