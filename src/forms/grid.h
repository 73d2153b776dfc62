#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "forms/control.h"
#include "forms/control_visitor.h"

namespace mirelo::forms {

// A grid of texts with one header row that stays in place (and, when asked for, fixed columns at the left), a
// selection, and columns of check cells.
//
// Rows and columns count from 0, the fixed ones included. The selection reaches from the active cell (Row,
// Col) to the other end (RowSel, ColSel). A click on the fixed parts selects what they head, from the first
// cell that is not fixed:
//
//   a cell             that cell
//   a header cell      its column, active cell in the first row below the header
//   a fixed row cell   its row, active cell in the first column that is not fixed
//   the corner         everything
class Grid : public Control {
 public:
  static constexpr int kBooleanColumn = 11;  // ColDataType of a column of check cells
  static constexpr int kCellPicture = 3;     // setting of Cell: the picture
  static constexpr int kSortAscending = 1;   // Sort: numbers by value, then texts without regard to case
  static constexpr int kSortDescending = 2;

  using Control::Control;
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  // New cells are empty; cells outside the new size are lost, and the selection is moved inside. Error 5
  // below 0.
  std::int32_t Rows() const { return static_cast<std::int32_t>(cells_.size()); }
  void Rows(std::int32_t rows);
  std::int32_t Cols() const { return static_cast<std::int32_t>(columns_.size()); }
  void Cols(std::int32_t cols);
  // Error 5 outside 0 to Cols().
  std::int32_t FixedCols() const { return fixed_cols_; }
  void FixedCols(std::int32_t cols);
  std::int32_t FixedRows() const { return Rows() < 1 ? 0 : 1; }

  std::int32_t Row() const { return row_; }
  std::int32_t Col() const { return col_; }
  std::int32_t RowSel() const { return row_sel_; }
  std::int32_t ColSel() const { return col_sel_; }
  // Sets the active row and takes the selection along. Error 381 outside the grid.
  void Row(std::int32_t row);
  // Error 381 outside the grid.
  void Select(std::int32_t row, std::int32_t col) { Select(row, col, row, col); }
  void Select(std::int32_t row, std::int32_t col, std::int32_t row_sel, std::int32_t col_sel);

  // Error 381 ("Invalid property array index") outside the grid.
  const std::string& TextMatrix(std::int32_t row, std::int32_t col) const;
  void TextMatrix(std::int32_t row, std::int32_t col, std::string text);

  // Twips. Error 381 for a column that the grid does not have.
  std::int32_t ColWidth(std::int32_t col) const { return At(col).width; }
  void ColWidth(std::int32_t col, std::int32_t width);
  int ColDataType(std::int32_t col) const { return At(col).data_type; }
  void ColDataType(std::int32_t col, int type);

  // How a column is aligned. General is texts left and numbers right; CenteredHeader is that below a header
  // in the middle.
  enum class Alignment { General, Left, Center, Right, CenteredHeader };
  Alignment ColAlignment(std::int32_t col) const { return At(col).alignment; }

  // Header texts parted by "|", one for each column; the grid gains columns when there are more, and a row
  // when it has none. A sign in front of a text aligns its column ("<" left, "^" in the middle, ">" right,
  // "=" for a centred header) and goes, with the blanks around the text. Columns behind the last text stay as
  // they are.
  const std::string& FormatString() const { return format_; }
  void FormatString(std::string format);

  // 0: not, 1: check cells toggle and texts can be edited.
  int Editable() const { return editable_; }
  void Editable(int editable) { Set(editable_, editable); }

  // The picture of a cell by the name that views know it under; empty for none. `setting` is kCellPicture,
  // error 5 otherwise. Error 381 outside the grid.
  void Cell(int setting, std::int32_t row, std::int32_t col, std::string picture);
  const std::string& Picture(std::int32_t row, std::int32_t col) const;

  // Removes a row; the rows below move up. Error 381 outside, error 5 for a fixed row.
  void RemoveItem(std::int32_t row);
  // Sorts the rows of the selection below the header (all when that is one row) by the active column, keeping
  // the order of equals. The selection stays where it is. Error 5 for another order than the two above.
  void Sort(int order);

  // Raised by a person's click, in this order: on a check cell of an editable grid BeforeEdit, then the cell
  // is toggled, then AfterEdit; on every cell, Click at last.
  Event<std::int32_t, std::int32_t, bool&> BeforeEdit;  // row, column, whether to cancel
  Event<std::int32_t, std::int32_t> AfterEdit;
  Event<> Click;

  void UserClickCell(std::int32_t row, std::int32_t col);
  // Extends the selection from the active cell to this one, as dragging does.
  void UserDragTo(std::int32_t row, std::int32_t col);
  // The arrow keys, and pressing the mouse before it is dragged: makes this cell the active one. Raises
  // nothing.
  void UserMoveTo(std::int32_t row, std::int32_t col);
  // The same with the shift key down: extends the selection to this cell, raising nothing.
  void UserExtendTo(std::int32_t row, std::int32_t col);
  // The blank key: toggles the active cell if it is a check cell.
  void UserToggle();
  // Types a new text over the active cell of an editable grid; check cells and cancelled edits keep theirs.
  void UserEditCell(std::string text);
  // Whether the active cell would take a text: asks BeforeEdit.
  bool UserMayEdit();
  void UserResizeColumn(std::int32_t col, std::int32_t width);

 private:
  struct Column {
    std::int32_t width = kDefaultWidth;
    int data_type = 0;
    Alignment alignment = Alignment::General;
  };
  struct GridCell {
    std::string text;
    std::string picture;
  };
  static constexpr std::int32_t kDefaultWidth = 960;

  const Column& At(std::int32_t col) const;
  Column& At(std::int32_t col);
  const GridCell& At(std::int32_t row, std::int32_t col) const;
  GridCell& At(std::int32_t row, std::int32_t col);
  void KeepSelectionInside();
  void SelectFor(std::int32_t row, std::int32_t col);
  bool IsOrdinary(std::int32_t row, std::int32_t col) const;
  bool AllowsEdit(std::int32_t row, std::int32_t col);
  void Toggle(std::int32_t row, std::int32_t col);

  std::vector<std::vector<GridCell>> cells_;
  std::vector<Column> columns_;
  std::int32_t fixed_cols_ = 0;
  std::int32_t row_ = 0;
  std::int32_t col_ = 0;
  std::int32_t row_sel_ = 0;
  std::int32_t col_sel_ = 0;
  std::string format_;
  int editable_ = 0;
};

}  // namespace mirelo::forms
