// What a person does to a grid, and what the grid makes of it.

#include <utility>

#include "forms/grid.h"

namespace mirelo::forms {

void Grid::UserClickCell(std::int32_t row, std::int32_t col) {
  if (!IsUsable() || row < 0 || row >= Rows() || col < 0 || col >= Cols()) return;
  SetFocus();
  SelectFor(row, col);
  if (IsOrdinary(row, col)) Toggle(row, col);
  Click.Raise();
}

void Grid::UserDragTo(std::int32_t row, std::int32_t col) {
  if (!IsUsable() || !IsOrdinary(row, col)) return;
  Select(row_, col_, row, col);
  Click.Raise();
}

void Grid::UserMoveTo(std::int32_t row, std::int32_t col) {
  if (!IsUsable() || !IsOrdinary(row, col)) return;
  SetFocus();
  Select(row, col);
}

void Grid::UserExtendTo(std::int32_t row, std::int32_t col) {
  if (!IsUsable() || !IsOrdinary(row, col)) return;
  SetFocus();
  Select(row_, col_, row, col);
}

void Grid::UserToggle() {
  if (IsUsable() && IsOrdinary(row_, col_)) Toggle(row_, col_);
}

bool Grid::UserMayEdit() {
  return IsUsable() && IsOrdinary(row_, col_) && ColDataType(col_) != kBooleanColumn &&
         AllowsEdit(row_, col_);
}

void Grid::UserEditCell(std::string text) {
  if (!UserMayEdit()) return;
  TextMatrix(row_, col_, std::move(text));
  AfterEdit.Raise(row_, col_);
}

void Grid::UserResizeColumn(std::int32_t col, std::int32_t width) {
  if (!IsUsable() || col < 0 || col >= Cols() || width < 0) return;
  ColWidth(col, width);
}

void Grid::SelectFor(std::int32_t row, std::int32_t col) {
  const bool whole_column = row < FixedRows();
  const bool whole_row = col < fixed_cols_;
  const auto last_row = Rows() - 1;
  const auto last_col = Cols() - 1;
  // Without a row below the header, or a column beside the fixed ones, there is nothing to select.
  if ((whole_column && last_row < FixedRows()) || (whole_row && last_col < fixed_cols_)) return;
  Select(whole_column ? FixedRows() : row, whole_row ? fixed_cols_ : col, whole_column ? last_row : row,
         whole_row ? last_col : col);
}

// Inside the grid, and not in its header or a fixed column.
bool Grid::IsOrdinary(std::int32_t row, std::int32_t col) const {
  return row >= FixedRows() && row < Rows() && col >= fixed_cols_ && col < Cols();
}

bool Grid::AllowsEdit(std::int32_t row, std::int32_t col) {
  if (editable_ == 0) return false;
  bool cancel = false;
  BeforeEdit.Raise(row, col, cancel);
  return !cancel;
}

void Grid::Toggle(std::int32_t row, std::int32_t col) {
  if (ColDataType(col) != kBooleanColumn || !AllowsEdit(row, col)) return;
  const auto& text = TextMatrix(row, col);
  const bool ticked = !text.empty() && text != "0";
  TextMatrix(row, col, ticked ? "0" : "-1");
  AfterEdit.Raise(row, col);
}

}  // namespace mirelo::forms
