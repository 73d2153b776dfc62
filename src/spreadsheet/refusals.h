#pragma once

#include <string_view>

#include "automation/runtime_error.h"

namespace mirelo::spreadsheet {

// The refusals that more than one place raises, adapters of several spreadsheets for the most part, and those
// that tell a limit: error 1004, with the sentence beside each.
namespace Refusals {

RuntimeError NotADirection();              // This is no direction.
RuntimeError NotTheLastCell();             // Only the last cell can be asked for.
RuntimeError NotACellToSearchFrom();       // A search begins at one cell of its range.
RuntimeError RangesOfOtherSheets();        // Both ranges must be of this sheet.
RuntimeError CellsOfASheetBehind();        // Only cells of the sheet in front can be selected.
RuntimeError NoCellsInFront();             // The sheet in front has no cells.
RuntimeError HiddenSheetBroughtToFront();  // A hidden sheet cannot be brought to the front.

RuntimeError CellTextTooLong();  // A cell's text cannot be longer than 32767 characters.
RuntimeError NotAColumnWidth();  // A column is 0 to 255 digits wide.
RuntimeError NotANumberFormat(std::string_view code);  // "CODE" is no number format.
RuntimeError NotAnAlignment();                         // This is no horizontal alignment.
RuntimeError NotAFontSize();                           // Letters are 1 to 409 points high.
RuntimeError NotAColorIndex();                         // This is no colour index.
RuntimeError NotAPattern();                            // This is no pattern.
RuntimeError NotABorder();                             // This is no border of a range.
RuntimeError NotALineStyle();                          // This is no style of lines.
RuntimeError NotALineWeight();                         // This is no weight of lines.
RuntimeError DisplayFormatSet();                       // How a cell is shown can only be read.

RuntimeError NotAComparisonOfValues();  // Only values of cells can be compared.
RuntimeError NotOneValueCompared();     // This operator does not compare with one value.
RuntimeError FontSizeOfACondition();    // A condition cannot change the size of letters.

RuntimeError HasAComment();            // This cell has a comment already.
RuntimeError CommentTooLong();         // The comment is longer than 32767 characters.
RuntimeError CommentGone();            // This comment is no longer there.
RuntimeError CommentBesideItsCell();   // A comment's box stands beside its cell.
RuntimeError CommentOnAHiddenSheet();  // A comment on a hidden sheet cannot be selected.

RuntimeError NoSuchShape();                       // The sheet has no such shape.
RuntimeError NoSuchShape(std::string_view name);  // The sheet has no shape "NAME".
RuntimeError NotAChart();                         // This shape is no chart.

RuntimeError ChartGone();             // This chart is no longer there.
RuntimeError ChartOnAHiddenSheet();   // A chart on a hidden sheet cannot be selected.
RuntimeError ChartToAHiddenSheet();   // A chart cannot be moved onto a hidden sheet.
RuntimeError ChartNamedByItsShape();  // A chart on a worksheet has the name of its shape.
RuntimeError TooManySeries();         // A chart has at most 255 series.
RuntimeError NotAMarkerSize();        // Markers are 2 to 72 points large.
RuntimeError TitleTooLong();          // The title is longer than 255 characters.
RuntimeError ChartWithoutTitle();     // This chart has no title.
RuntimeError NoSuchSeries();          // The chart has no such series.
RuntimeError NoSecondaryAxes();       // These charts have no secondary axes.

}  // namespace Refusals

}  // namespace mirelo::spreadsheet
