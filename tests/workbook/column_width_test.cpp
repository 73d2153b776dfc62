#include <gtest/gtest.h>

#include <cstdint>

#include "adapters/workbook/display/column_fit.h"
#include "spreadsheet/column_digits.h"
#include "spreadsheet/limits.h"
#include "workbook/workbook_files.h"

namespace mirelo::workbook {
namespace {

std::int32_t FittedWidth(const std::string& text, const Style& style = {}) {
  const auto book = Book::New();
  Sheet& sheet = *book->sheets.front();
  if (!text.empty()) sheet.cells.Set(1, 2, CellValue::OfText(text));
  sheet.styles.Set(Area::Cell(1, 2), book->styles.Intern(style));
  FitColumns(*book, sheet, {1, 2, kRows, 2});
  EXPECT_EQ(sheet.widths.At(1), ColumnWidth()) << "the column beside keeps its width";
  return sheet.widths.At(2).pixels;
}

TEST(ColumnFit, GrowsWithTheText) {
  EXPECT_LT(FittedWidth("Last"), FittedWidth("LastVolume"));
  EXPECT_LT(FittedWidth("illi"), FittedWidth("WWWW"));
}

TEST(ColumnFit, GrowsWithTheFont) {
  Style bold;
  bold.font.bold = true;
  Style large;
  large.font.size = 22;
  EXPECT_LT(FittedWidth("NumTrades"), FittedWidth("NumTrades", bold));
  EXPECT_LT(FittedWidth("NumTrades", bold), FittedWidth("NumTrades", large));
}

TEST(ColumnFit, LeavesAColumnWithoutTextAsItIs) { EXPECT_EQ(FittedWidth(""), ColumnWidth::kStandardPixels); }

TEST(ColumnFit, TakesTheWidestLineOfSeveral) {
  EXPECT_EQ(FittedWidth("a\nwide line\nb"), FittedWidth("wide line"));
}

TEST(ColumnFit, EndsAtTheGreatestWidth) {
  EXPECT_EQ(FittedWidth(std::string(5000, 'W')), ColumnWidth::kGreatestPixels);
  EXPECT_EQ(ColumnWidth::kGreatestPixels, PixelsOfDigits(kMostDigits));
}

TEST(ColumnFit, MeasuresWhatTheCellShows) {
  const auto book = Book::New();
  Sheet& sheet = *book->sheets.front();
  Style style;
  style.number_format = "0.0000000000";
  sheet.cells.Set(1, 1, CellValue(1.0));
  sheet.cells.Set(1, 2, CellValue(1.0));
  sheet.styles.Set(Area::Cell(1, 2), book->styles.Intern(style));
  FitColumns(*book, sheet, {1, 1, kRows, 2});
  EXPECT_GT(sheet.widths.At(2).pixels, sheet.widths.At(1).pixels);
}

}  // namespace
}  // namespace mirelo::workbook
