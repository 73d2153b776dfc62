#include "spreadsheet/refusals.h"

#include <gtest/gtest.h>

#include <string_view>

#include "support/error_number.h"

namespace mirelo::spreadsheet {
namespace {

TEST(RefusalsOfSpreadsheets, AreTheseSentences) {
  const struct {
    RuntimeError error;
    std::string_view sentence;
  } cases[] = {
      {Refusals::NotADirection(), "This is no direction."},
      {Refusals::NotTheLastCell(), "Only the last cell can be asked for."},
      {Refusals::NotACellToSearchFrom(), "A search begins at one cell of its range."},
      {Refusals::RangesOfOtherSheets(), "Both ranges must be of this sheet."},
      {Refusals::CellsOfASheetBehind(), "Only cells of the sheet in front can be selected."},
      {Refusals::NoCellsInFront(), "The sheet in front has no cells."},
      {Refusals::HiddenSheetBroughtToFront(), "A hidden sheet cannot be brought to the front."},
      {Refusals::CellTextTooLong(), "A cell's text cannot be longer than 32767 characters."},
      {Refusals::NotAColumnWidth(), "A column is 0 to 255 digits wide."},
      {Refusals::NotANumberFormat("0.0q"), "\"0.0q\" is no number format."},
      {Refusals::NotAnAlignment(), "This is no horizontal alignment."},
      {Refusals::NotAFontSize(), "Letters are 1 to 409 points high."},
      {Refusals::NotAColorIndex(), "This is no colour index."},
      {Refusals::NotAPattern(), "This is no pattern."},
      {Refusals::NotABorder(), "This is no border of a range."},
      {Refusals::NotALineStyle(), "This is no style of lines."},
      {Refusals::NotALineWeight(), "This is no weight of lines."},
      {Refusals::DisplayFormatSet(), "How a cell is shown can only be read."},
      {Refusals::NotAComparisonOfValues(), "Only values of cells can be compared."},
      {Refusals::NotOneValueCompared(), "This operator does not compare with one value."},
      {Refusals::FontSizeOfACondition(), "A condition cannot change the size of letters."},
      {Refusals::HasAComment(), "This cell has a comment already."},
      {Refusals::CommentTooLong(), "The comment is longer than 32767 characters."},
      {Refusals::CommentGone(), "This comment is no longer there."},
      {Refusals::CommentBesideItsCell(), "A comment's box stands beside its cell."},
      {Refusals::CommentOnAHiddenSheet(), "A comment on a hidden sheet cannot be selected."},
      {Refusals::NoSuchShape(), "The sheet has no such shape."},
      {Refusals::NoSuchShape("Chart 9"), "The sheet has no shape \"Chart 9\"."},
      {Refusals::NotAChart(), "This shape is no chart."},
      {Refusals::ChartGone(), "This chart is no longer there."},
      {Refusals::ChartOnAHiddenSheet(), "A chart on a hidden sheet cannot be selected."},
      {Refusals::ChartToAHiddenSheet(), "A chart cannot be moved onto a hidden sheet."},
      {Refusals::ChartNamedByItsShape(), "A chart on a worksheet has the name of its shape."},
      {Refusals::TooManySeries(), "A chart has at most 255 series."},
      {Refusals::NotAMarkerSize(), "Markers are 2 to 72 points large."},
      {Refusals::TitleTooLong(), "The title is longer than 255 characters."},
      {Refusals::ChartWithoutTitle(), "This chart has no title."},
      {Refusals::NoSuchSeries(), "The chart has no such series."},
      {Refusals::NoSecondaryAxes(), "These charts have no secondary axes."},
  };
  for (const auto& c : cases) testing::ExpectError(c.error, 1004, c.sentence, "Workbook");
}

}  // namespace
}  // namespace mirelo::spreadsheet
