// Which rows of a table a chart shows, at every length of the table.

#include "charts/chart_rows.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <ostream>

#include "support/error_number.h"

namespace mirelo::testing {
namespace {

constexpr std::int32_t kSheetRows = 65536;
constexpr std::int32_t kRowLimit = kSheetRows - 1;

struct Rows {
  std::int32_t first;
  std::int32_t last;
  friend bool operator==(const Rows&, const Rows&) = default;
};
void PrintTo(const Rows& rows, std::ostream* out) { *out << rows.first << " to " << rows.last; }

// Where one arrives from the header of a column with so many rows of data, which begin in row 3.
std::int32_t EndOf(std::int32_t data_rows) { return data_rows == 0 ? kSheetRows : data_rows + 2; }

Rows OfNewChart(std::int32_t data_rows, std::int32_t points) {
  const std::int32_t end = EndOf(data_rows);
  return {FirstRowOfNewChart(end, kRowLimit, points), LastRowOfChart(end, kRowLimit, points)};
}
Rows OfUpdatedChart(std::int32_t data_rows, std::int32_t points) {
  const std::int32_t end = EndOf(data_rows);
  return {FirstRowOfUpdatedChart(end, kRowLimit, points), LastRowOfChart(end, kRowLimit, points)};
}

// The last rows of a table that is long enough.
Rows LastRows(std::int32_t data_rows, std::int32_t points) {
  return {data_rows + 2 - points + 1, data_rows + 2};
}

TEST(RowsOfANewChart, AreTheLastOnesOrThoseToComeAtEveryLength) {
  for (const std::int32_t points : {5, 20, 100}) {
    for (std::int32_t data_rows = 0; data_rows <= 3 * points; ++data_rows) {
      SCOPED_TRACE(::testing::Message() << data_rows << " rows, " << points << " points");
      const Rows expected = data_rows < points ? Rows{3, points + 1} : LastRows(data_rows, points);
      EXPECT_EQ(OfNewChart(data_rows, points), expected);
    }
  }
}

TEST(RowsOfANewChart, NeverBeginWithTheHeaders) {
  for (std::int32_t data_rows = 0; data_rows <= 60; ++data_rows) {
    EXPECT_GE(OfNewChart(data_rows, 20).first, 3) << data_rows;
  }
}

TEST(RowsOfAnUpdatedChart, AreTheLastOnesOrThoseToComeAtEveryLength) {
  for (const std::int32_t points : {5, 20, 100}) {
    for (std::int32_t data_rows = 0; data_rows <= 3 * points; ++data_rows) {
      SCOPED_TRACE(::testing::Message() << data_rows << " rows, " << points << " points");
      Rows expected{3, points + 1};
      if (data_rows == points - 1) expected.first = 2;  // the headers, at this one length
      if (data_rows >= points) expected = LastRows(data_rows, points);
      EXPECT_EQ(OfUpdatedChart(data_rows, points), expected);
    }
  }
}

TEST(RowsOfAnUpdatedChart, DependOnWhereTheDataEnd) {
  const struct {
    const char* name;
    std::int32_t end;
    Rows rows;
  } cases[] = {
      {"through row 22", 22, {3, 22}},
      {"through row 100", 100, {81, 100}},
      {"through row 21, with the headers", 21, {2, 21}},
      {"through row 10, with rows to come", 10, {3, 21}},
      {"the last row but one of the sheet", kRowLimit, {kRowLimit - 19, kRowLimit}},
      {"no data", kSheetRows, {3, 21}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ((Rows{FirstRowOfUpdatedChart(c.end, kRowLimit, 20), LastRowOfChart(c.end, kRowLimit, 20)}),
              c.rows);
  }
}

TEST(RowsOfAChart, AreAnOverflowForPointsWithoutEnd) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
  EXPECT_EQ(NumberOf([] { LastRowOfChart(5, kRowLimit, kMost); }), 6);
  EXPECT_EQ(NumberOf([] { LastRowOfChart(5, kRowLimit, kLeast); }), 6);
  EXPECT_EQ(NumberOf([] { FirstRowOfNewChart(5, kRowLimit, kLeast); }), 6);
  EXPECT_EQ(NumberOf([] { FirstRowOfUpdatedChart(5, kRowLimit, kLeast); }), 6);
}

}  // namespace
}  // namespace mirelo::testing
