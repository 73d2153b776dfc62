#include "spreadsheet/refusals.h"

#include <cstdint>
#include <string>

#include "spreadsheet/errors.h"
#include "spreadsheet/limits.h"

namespace mirelo::spreadsheet::Refusals {

namespace {

std::string Whole(double limit) { return std::to_string(static_cast<std::int32_t>(limit)); }

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

}  // namespace

RuntimeError NotADirection() { return Refused("This is no direction."); }
RuntimeError NotTheLastCell() { return Refused("Only the last cell can be asked for."); }
RuntimeError NotACellToSearchFrom() { return Refused("A search begins at one cell of its range."); }
RuntimeError RangesOfOtherSheets() { return Refused("Both ranges must be of this sheet."); }
RuntimeError CellsOfASheetBehind() { return Refused("Only cells of the sheet in front can be selected."); }
RuntimeError NoCellsInFront() { return Refused("The sheet in front has no cells."); }
RuntimeError HiddenSheetBroughtToFront() { return Refused("A hidden sheet cannot be brought to the front."); }

RuntimeError CellTextTooLong() {
  return Refused("A cell's text cannot be longer than " + std::to_string(kLongestText) + " characters.");
}
RuntimeError NotAColumnWidth() { return Refused("A column is 0 to " + Whole(kMostDigits) + " digits wide."); }
RuntimeError NotANumberFormat(std::string_view code) {
  return Refused(Quoted(code) + " is no number format.");
}
RuntimeError NotAnAlignment() { return Refused("This is no horizontal alignment."); }
RuntimeError NotAFontSize() {
  return Refused("Letters are " + Whole(kLeastFontSize) + " to " + Whole(kGreatestFontSize) +
                 " points high.");
}
RuntimeError NotAColorIndex() { return Refused("This is no colour index."); }
RuntimeError NotAPattern() { return Refused("This is no pattern."); }
RuntimeError NotABorder() { return Refused("This is no border of a range."); }
RuntimeError NotALineStyle() { return Refused("This is no style of lines."); }
RuntimeError NotALineWeight() { return Refused("This is no weight of lines."); }
RuntimeError DisplayFormatSet() { return Refused("How a cell is shown can only be read."); }

RuntimeError NotAComparisonOfValues() { return Refused("Only values of cells can be compared."); }
RuntimeError NotOneValueCompared() { return Refused("This operator does not compare with one value."); }
RuntimeError FontSizeOfACondition() { return Refused("A condition cannot change the size of letters."); }

RuntimeError HasAComment() { return Refused("This cell has a comment already."); }
RuntimeError CommentTooLong() {
  return Refused("The comment is longer than " + std::to_string(kLongestText) + " characters.");
}
RuntimeError CommentGone() { return Refused("This comment is no longer there."); }
RuntimeError CommentBesideItsCell() { return Refused("A comment's box stands beside its cell."); }
RuntimeError CommentOnAHiddenSheet() { return Refused("A comment on a hidden sheet cannot be selected."); }

RuntimeError NoSuchShape() { return Refused("The sheet has no such shape."); }
RuntimeError NoSuchShape(std::string_view name) {
  return Refused("The sheet has no shape " + Quoted(name) + ".");
}
RuntimeError NotAChart() { return Refused("This shape is no chart."); }

RuntimeError ChartGone() { return Refused("This chart is no longer there."); }
RuntimeError ChartOnAHiddenSheet() { return Refused("A chart on a hidden sheet cannot be selected."); }
RuntimeError ChartToAHiddenSheet() { return Refused("A chart cannot be moved onto a hidden sheet."); }
RuntimeError ChartNamedByItsShape() { return Refused("A chart on a worksheet has the name of its shape."); }
RuntimeError TooManySeries() {
  return Refused("A chart has at most " + std::to_string(kMostSeries) + " series.");
}
RuntimeError NotAMarkerSize() {
  return Refused("Markers are " + std::to_string(kLeastMarker) + " to " + std::to_string(kGreatestMarker) +
                 " points large.");
}
RuntimeError TitleTooLong() {
  return Refused("The title is longer than " + std::to_string(kLongestTitle) + " characters.");
}
RuntimeError ChartWithoutTitle() { return Refused("This chart has no title."); }
RuntimeError NoSuchSeries() { return Refused("The chart has no such series."); }
RuntimeError NoSecondaryAxes() { return Refused("These charts have no secondary axes."); }

}  // namespace mirelo::spreadsheet::Refusals
