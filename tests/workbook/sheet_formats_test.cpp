#include <gtest/gtest.h>

#include <random>
#include <set>

#include "adapters/workbook/model/sheet_formats.h"

namespace mirelo::workbook {
namespace {

// What a reader of the file makes of the formats told.
StyleId ToldStyle(const SheetFormats& formats, std::int32_t row, std::int32_t column) {
  StyleId style = kDefaultStyle;
  for (const auto& columns : formats.columns()) {
    if (columns.first <= column && column <= columns.last) style = columns.style;
  }
  for (const auto& rows : formats.rows()) {
    if (rows.first <= row && row <= rows.last) style = rows.style;
  }
  formats.ForEachException(row, row, [&](const Area& area, StyleId exception) {
    if (area.first_column <= column && column <= area.last_column) style = exception;
  });
  return style;
}

TEST(SheetFormats, TellEveryCellsFormat) {
  std::mt19937 random(36000);
  const auto below = [&](int bound) {
    return static_cast<std::int32_t>(random() % static_cast<unsigned>(bound));
  };
  for (int round = 0; round < 40; ++round) {
    StyleGrid grid;
    for (int step = 0; step < 8; ++step) {
      const auto style = static_cast<StyleId>(below(3));
      const std::int32_t row = 1 + below(6);
      const std::int32_t column = 1 + below(6);
      switch (below(3)) {
        case 0:
          grid.Set({1, column, kRows, column + below(3)}, style);
          break;
        case 1:
          grid.Set({row, 1, row + below(3), kColumns}, style);
          break;
        default:
          grid.Set({row, column, row + below(3), column + below(3)}, style);
      }
    }
    const SheetFormats formats(grid);
    for (std::int32_t row : {1, 2, 3, 4, 5, 6, 7, 8, 9, kRows}) {
      for (std::int32_t column : {1, 2, 3, 4, 5, 6, 7, 8, 9, kColumns}) {
        ASSERT_EQ(ToldStyle(formats, row, column), grid.At(row, column))
            << "round " << round << ": " << row << ", " << column;
      }
    }
  }
}

TEST(SheetFormats, TellWholeColumnsAndRowsWithoutCells) {
  StyleGrid grid;
  grid.Set({1, 2, kRows, 4}, 1);
  grid.Set({5, 1, 6, kColumns}, 2);
  const SheetFormats formats(grid);
  EXPECT_EQ(formats.CountExceptions(), 0);
  ASSERT_EQ(formats.rows().size(), 1u);
  EXPECT_EQ(formats.rows()[0].style, 2u);
}

TEST(SheetFormats, CountTheCellsThatNeedTelling) {
  StyleGrid grid;
  grid.Set({3, 2, 36'002, 9}, 1);
  EXPECT_EQ(SheetFormats(grid).CountExceptions(), 36'000 * 8);
}

}  // namespace
}  // namespace mirelo::workbook
