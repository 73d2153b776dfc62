#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "adapters/workbook/model/style_grid.h"

namespace mirelo::workbook {
namespace {

TEST(StyleGrid, DoesWhatATableDoesUnderRandomChanges) {
  constexpr std::int32_t kSize = 24;
  std::mt19937 random(1900);
  const auto below = [&](int bound) {
    return static_cast<std::int32_t>(random() % static_cast<unsigned>(bound));
  };
  StyleGrid grid;
  std::vector<std::vector<StyleId>> table(kSize, std::vector<StyleId>(kSize, kDefaultStyle));

  for (int step = 0; step < 1500; ++step) {
    const std::int32_t row = below(kSize);
    const std::int32_t column = below(kSize);
    const std::int32_t last_row = row + below(kSize - row);
    const std::int32_t last_column = column + below(kSize - column);
    const auto style = static_cast<StyleId>(below(4));
    grid.Set({row + 1, column + 1, last_row + 1, last_column + 1}, style);
    for (std::int32_t r = row; r <= last_row; ++r) {
      for (std::int32_t c = column; c <= last_column; ++c) {
        table[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)] = style;
      }
    }
    const std::int32_t r = below(kSize);
    const std::int32_t c = below(kSize);
    ASSERT_EQ(grid.At(r + 1, c + 1), table[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)])
        << "step " << step;
  }

  std::int64_t cells = 0;
  grid.ForEach({1, 1, kSize, kSize}, [&](const Area& area, StyleId style) {
    cells += area.Cells();
    for (std::int32_t r = area.first_row; r <= area.last_row; ++r) {
      for (std::int32_t c = area.first_column; c <= area.last_column; ++c) {
        EXPECT_EQ(style, table[static_cast<std::size_t>(r - 1)][static_cast<std::size_t>(c - 1)]);
      }
    }
  });
  EXPECT_EQ(cells, kSize * kSize) << "every cell is visited once";
}

std::size_t RunsOf(const StyleGrid& grid) {
  std::size_t runs = 0;
  grid.ForEachColumnRun(
      [&](std::int32_t, std::int32_t, const StyleGrid::Rows& rows) { runs += rows.RunCount(); });
  return runs;
}

TEST(StyleGrid, NeedsNoMoreForAMillionFormattedRowsThanForTen) {
  StyleGrid ten;
  ten.Set({3, 2, 12, 9}, 1);
  StyleGrid million;
  million.Set({3, 2, 1'000'002, 9}, 1);
  EXPECT_EQ(RunsOf(million), RunsOf(ten));
}

TEST(StyleGrid, ForgetsRunsThatHaveBecomeEqual) {
  StyleGrid grid;
  const std::size_t plain = RunsOf(grid);
  for (std::int32_t row = 1; row <= 100; ++row) grid.Set(Area::Cell(row, row), 1);
  EXPECT_GT(RunsOf(grid), plain);
  grid.Set({1, 1, 100, 100}, kDefaultStyle);
  EXPECT_EQ(RunsOf(grid), plain);
}

TEST(RunMap, LaysPatchesOverRuns) {
  RunMap<int> base(100, 0);
  base.Set(10, 20, 1);
  const auto laid = RunMap<int>::Overlay(base, {{1, 2, 7}, {15, 15, 2}, {18, 30, 0}, {100, 100, 9}});
  for (int number = 1; number <= 100; ++number) {
    int wanted = base.At(number);
    if (number <= 2) wanted = 7;
    if (number == 15) wanted = 2;
    if (18 <= number && number <= 30) wanted = 0;
    if (number == 100) wanted = 9;
    EXPECT_EQ(laid.At(number), wanted) << number;
  }
}

}  // namespace
}  // namespace mirelo::workbook
