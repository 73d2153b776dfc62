#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "automation/variant.h"
#include "host/excel/constants.h"
#include "host/excel/selectable.h"

namespace mirelo::host::excel {

class Border;
class Comment;
class DisplayFormat;
class Font;
class FormatConditions;
class Interior;
class Worksheet;

// A rectangle of cells of one sheet, seen as cells, as rows (what Rows() gives) or as columns (Columns()).
// The view decides what Count() counts and what Item(index) gives. A range stays where it is when its cells
// change.
//
// Properties of formats give an empty variant where the cells of the range differ.
class Range : public Selectable {
 public:
  std::string_view TypeName() const override { return "Range"; }

  // The value of a single cell; of more cells a two-dimensional array (row, column) with both lower bounds 1.
  // A number in a date format reads as a date with the cell's own number, so that cell number 1, shown as 1
  // January 1900, is the automation date 1; an error reads as its text, "#N/A". Error 7 for more cells than
  // an array may hold (2^24).
  virtual Variant Value() = 0;

  // Writes a value to all cells, or an array to cells one by one. Empty clears a cell's content.
  //
  // An array's first element goes to the top left cell, whatever its bounds. An array of one dimension is one
  // row. An array of one row (column) is repeated down (across) the range; cells that a larger array does not
  // reach become #N/A, elements that find no cell are dropped.
  //
  // Text is taken as if a person typed it: text that reads as a number, percentage, date, time, boolean or
  // error value becomes that, unless the cell's number format is "@" or an apostrophe stands in front, which
  // is taken off. Text with a leading "=" is stored as text, since nothing here computes formulas. A value
  // that brings a form of its own (date, percentage, grouped number) sets the number format of a cell that
  // has "General".
  //
  // Error 13 for objects other than ranges (a range gives its value) and arrays within arrays; 1004 for text
  // of more than 32767 UTF-16 units, the apostrophe not counted, and dates outside 0 to 2958465 (31 December
  // 9999). Cells are unchanged then. A number that is not finite becomes #NUM!.
  virtual void Value(const Variant& value) = 0;

  // The text that the first cell shows in its number format, whatever its column's width.
  virtual std::string Text() = 0;

  // The same cells, seen as cells. With numbers: one cell counted from this range's first (1, 1), also
  // outside of the range; error 1004 off the sheet.
  virtual std::shared_ptr<Range> Cells() = 0;
  virtual std::shared_ptr<Range> Cells(std::int32_t row, std::int32_t column) = 0;
  virtual std::shared_ptr<Range> Item(std::int32_t row, std::int32_t column) = 0;
  // The cell (row after row), row or column of this number, by the range's view; numbers beyond Count() go on
  // below the range (columns: to its right). Error 1004 off the sheet.
  virtual std::shared_ptr<Range> Item(std::int32_t index) = 0;

  // As many rows and columns from this range's first cell. Error 1004 for counts below 1 and past the sheet's
  // edge.
  virtual std::shared_ptr<Range> Resize(std::int32_t rows, std::int32_t columns) = 0;

  // Number of the first row and the first column, from 1.
  virtual std::int32_t Row() = 0;
  virtual std::int32_t Column() = 0;
  virtual std::shared_ptr<Range> Rows() = 0;
  virtual std::shared_ptr<Range> Columns() = 0;
  // Cells, rows or columns, by the range's view. Error 6 for more cells than 32 bits count.
  virtual std::int32_t Count() = 0;

  // "$A$2:$C$4"; with an argument false that part has no "$". A single cell is "$A$2", whole columns "$A:$C",
  // whole rows "$2:$4".
  virtual std::string Address(bool row_absolute, bool column_absolute) = 0;
  std::string Address() { return Address(true, true); }

  virtual std::shared_ptr<excel::Worksheet> Worksheet() = 0;

  // Where a person arrives from the first cell with the end key: the last filled cell before a gap if this
  // cell and its neighbour are filled, otherwise the next filled cell, and if there is none the sheet's edge.
  virtual std::shared_ptr<Range> End(XlDirection direction) = 0;

  // The last cell of the sheet's used area, whatever cells this range has: in the last row and the last
  // column that hold a value or a format of their own, also when they meet in an empty cell. A1 on a sheet
  // that nobody touched. Formats of whole columns make no column used, formats of whole rows only the row.
  // What was cleared counts no more. Error 1004 for types other than xlCellTypeLastCell.
  virtual std::shared_ptr<Range> SpecialCells(XlCellType type) = 0;

  // The next cell whose content has a part that matches `what`, letters of either case: "*" stands for any
  // text, "?" for any character, and "~" in front of either of them, or of another "~", takes it as it is.
  // Values are looked at as a person types them, empty cells never match. The search begins behind
  // (xlPrevious: before) `after`, goes row by row or column by column, comes round at the range's end, and
  // ends with `after` itself. Null when no cell matches. Error 1004 when `after` is not one cell of this
  // range.
  virtual std::shared_ptr<Range> Find(std::string_view what, Range& after, XlSearchOrder order,
                                      XlSearchDirection direction) = 0;

  // Selects the cells; the first of them becomes the active cell. Error 1004 unless the sheet is in front.
  void Select() override = 0;

  // Points, from the sheet's top left corner. Hidden rows and columns have no size.
  virtual double Left() = 0;
  virtual double Top() = 0;
  virtual double Width() = 0;
  virtual double Height() = 0;

  virtual std::shared_ptr<Range> EntireColumn() = 0;
  virtual std::shared_ptr<Range> EntireRow() = 0;
  // How many digits of the standard font the columns take; nothing where they differ. What is set lies
  // between 0 and 255 (error 1004). Charts that move with their cells follow, here and when columns are
  // fitted.
  virtual Variant ColumnWidth() = 0;
  virtual void ColumnWidth(double digits) = 0;
  // Fits the widths of columns to their texts; columns without text keep theirs. Error 1004 for a range that
  // is not whole columns nor seen as columns.
  virtual void AutoFit() = 0;

  // Takes away values, formats, conditional formats and comments.
  virtual void Clear() = 0;
  // Takes away values only.
  virtual void ClearContents() = 0;

  // Takes the cells out of the sheet: the cells below move up with their values, formats, conditional formats
  // and comments, and empty ones come in at the foot. Other ranges stay where they are. Error 1004 for shifts
  // other than xlShiftUp, and for whole columns, which no cells could fill from below.
  virtual void Delete(XlDeleteShiftDirection shift) = 0;

  // The comment of the first cell; null when it has none.
  virtual std::shared_ptr<excel::Comment> Comment() = 0;
  // Lays a comment on a single cell. Error 1004 when it has one already, for a range of several cells, and
  // for text of more than 32767 UTF-16 units.
  virtual std::shared_ptr<excel::Comment> AddComment(std::string_view text) = 0;
  virtual void ClearComments() = 0;

  // A format code in its United States form, "General" at the start. Error 1004 for a text that is no format
  // code or is longer than 127 bytes.
  virtual Variant NumberFormat() = 0;
  virtual void NumberFormat(std::string_view format) = 0;

  // An XlHAlign; error 1004 for other numbers.
  virtual Variant HorizontalAlignment() = 0;
  virtual void HorizontalAlignment(std::int32_t alignment) = 0;

  virtual std::shared_ptr<excel::Font> Font() = 0;
  virtual std::shared_ptr<excel::Interior> Interior() = 0;
  // Error 1004 for numbers that are no XlBordersIndex. Inside a range of one column (row) there are no
  // vertical (horizontal) lines: setting them does nothing, and they read as lines that are not there.
  virtual std::shared_ptr<Border> Borders(XlBordersIndex index) = 0;
  virtual std::shared_ptr<excel::FormatConditions> FormatConditions() = 0;
  // How the first cell is shown at this moment.
  virtual std::shared_ptr<excel::DisplayFormat> DisplayFormat() = 0;
};

}  // namespace mirelo::host::excel
