#include <gtest/gtest.h>

#include <map>
#include <random>

#include "adapters/workbook/model/cell_column.h"

namespace mirelo::workbook {
namespace {

// A plain map does what the packed column must do.
class Twin {
 public:
  void Set(std::int32_t row, double number) {
    column.Set(row, CellValue(number));
    map[row] = number;
  }
  void Clear(std::int32_t first, std::int32_t last) {
    column.Clear(first, last);
    map.erase(map.lower_bound(first), map.upper_bound(last));
  }

  void ExpectSame() const {
    ASSERT_EQ(column.Count(), map.size());
    auto wanted = map.begin();
    column.ForEach(1, kRows, [&](std::int32_t row, const CellValue& value) {
      ASSERT_NE(wanted, map.end());
      EXPECT_EQ(row, wanted->first);
      EXPECT_EQ(*value.IfNumber(), wanted->second);
      ++wanted;
    });
    EXPECT_EQ(wanted, map.end());
    EXPECT_EQ(column.IsEmpty(), map.empty());
  }

  void ExpectSameSearches(std::int32_t row) const {
    const auto next = map.lower_bound(row);
    EXPECT_EQ(column.NextFilled(row), next == map.end() ? 0 : next->first);
    const auto behind = map.upper_bound(row);
    EXPECT_EQ(column.PreviousFilled(row), behind == map.begin() ? 0 : std::prev(behind)->first);
    if (!map.contains(row)) return;
    std::int32_t end = row;
    while (map.contains(end + 1)) ++end;
    std::int32_t start = row;
    while (map.contains(start - 1)) --start;
    EXPECT_EQ(column.EndOfRun(row), end);
    EXPECT_EQ(column.StartOfRun(row), start);
  }

  CellColumn column;
  std::map<std::int32_t, double> map;
};

TEST(CellColumn, DoesWhatAMapDoesUnderRandomWrites) {
  std::mt19937 random(20110120);
  const auto below = [&](int bound) {
    return static_cast<std::int32_t>(random() % static_cast<unsigned>(bound));
  };
  Twin twin;
  for (int step = 0; step < 4000; ++step) {
    const std::int32_t row = 1 + below(500);
    switch (below(8)) {
      case 0:
        twin.Clear(row, row);
        break;
      case 1:
        twin.Clear(row, row + below(200));
        break;
      case 2:
        for (std::int32_t r = row; r < row + 100; ++r) twin.Set(r, r);
        break;
      default:
        twin.Set(row, step);
    }
    twin.ExpectSameSearches(1 + below(700));
  }
  twin.ExpectSame();
}

TEST(CellColumn, VisitsOnlyTheRowsAskedFor) {
  Twin twin;
  for (const std::int32_t row : {1, 63, 64, 65, 128, 129, kRows}) twin.Set(row, row);
  std::vector<std::int32_t> rows;
  twin.column.ForEach(64, 128, [&](std::int32_t row, const CellValue&) { rows.push_back(row); });
  EXPECT_EQ(rows, (std::vector<std::int32_t>{64, 65, 128}));
}

TEST(CellColumn, ReplacesAValueInPlace) {
  CellColumn column;
  column.Set(5, CellValue(1.0));
  column.Set(5, CellValue::OfText("x"));
  EXPECT_EQ(column.Count(), 1u);
  EXPECT_EQ(*column.Find(5)->IfText(), "x");
  column.Set(5, CellValue());
  EXPECT_TRUE(column.IsEmpty());
}

TEST(CellValue, TakesSixteenBytes) { EXPECT_EQ(sizeof(CellValue), 16u); }

}  // namespace
}  // namespace mirelo::workbook
