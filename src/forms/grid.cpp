#include "forms/grid.h"

#include <algorithm>
#include <utility>

#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/text.h"

namespace mirelo::forms {

namespace {

// The header's text without the sign that aligns its column.
std::string HeaderText(std::string_view piece) {
  piece = Trim(piece);
  if (!piece.empty() && std::string_view("<^>=").find(piece.front()) != std::string_view::npos)
    piece.remove_prefix(1);
  return std::string(Trim(piece));
}

bool LiesBefore(const std::string& a, const std::string& b) {
  const auto left = ParseNumber(a);
  const auto right = ParseNumber(b);
  if (left && right) return *left < *right;
  return StrComp(a, b, Compare::Text) < 0;
}

}  // namespace

void Grid::Rows(std::int32_t rows) {
  if (rows < 0) throw Errors::InvalidProcedureCall();
  cells_.resize(static_cast<std::size_t>(rows), std::vector<GridCell>(columns_.size()));
  KeepSelectionInside();
}

void Grid::Cols(std::int32_t cols) {
  if (cols < 0) throw Errors::InvalidProcedureCall();
  columns_.resize(static_cast<std::size_t>(cols));
  for (auto& row : cells_) row.resize(columns_.size());
  fixed_cols_ = std::min(fixed_cols_, cols);
  KeepSelectionInside();
}

void Grid::FixedCols(std::int32_t cols) {
  if (cols < 0 || cols > Cols()) throw Errors::InvalidProcedureCall();
  Set(fixed_cols_, cols);
}

void Grid::Row(std::int32_t row) {
  if (row < 0 || row >= Rows()) throw Errors::InvalidPropertyArrayIndex();
  row_ = row_sel_ = row;
  col_sel_ = col_;
  Appearance.Raise();
}

void Grid::Select(std::int32_t row, std::int32_t col, std::int32_t row_sel, std::int32_t col_sel) {
  At(row, col);
  At(row_sel, col_sel);
  row_ = row;
  col_ = col;
  row_sel_ = row_sel;
  col_sel_ = col_sel;
  Appearance.Raise();
}

const std::string& Grid::TextMatrix(std::int32_t row, std::int32_t col) const { return At(row, col).text; }

void Grid::TextMatrix(std::int32_t row, std::int32_t col, std::string text) {
  Set(At(row, col).text, std::move(text));
}

void Grid::ColWidth(std::int32_t col, std::int32_t width) { Set(At(col).width, width); }

void Grid::ColDataType(std::int32_t col, int type) { Set(At(col).data_type, type); }

void Grid::FormatString(std::string format) {
  format_ = std::move(format);
  const auto pieces = Split(format_, "|");
  const auto count = static_cast<std::int32_t>(pieces.size());
  if (Cols() < count) Cols(count);
  if (Rows() < 1) Rows(1);
  for (std::int32_t c = 0; c < count; ++c)
    cells_[0][static_cast<std::size_t>(c)].text = HeaderText(pieces[static_cast<std::size_t>(c)]);
  Appearance.Raise();
}

void Grid::Cell(int setting, std::int32_t row, std::int32_t col, std::string picture) {
  if (setting != kCellPicture) throw Errors::InvalidProcedureCall();
  Set(At(row, col).picture, std::move(picture));
}

const std::string& Grid::Picture(std::int32_t row, std::int32_t col) const { return At(row, col).picture; }

void Grid::RemoveItem(std::int32_t row) {
  if (row < 0 || row >= Rows()) throw Errors::InvalidPropertyArrayIndex();
  if (row < FixedRows()) throw Errors::InvalidProcedureCall();
  cells_.erase(cells_.begin() + row);
  KeepSelectionInside();
}

void Grid::Sort(int order) {
  if (order != kSortAscending && order != kSortDescending) throw Errors::InvalidProcedureCall();
  if (Rows() <= FixedRows()) return;
  auto first = std::min(row_, row_sel_);
  auto last = std::max(row_, row_sel_);
  if (first == last) {
    first = FixedRows();
    last = Rows() - 1;
  }
  const auto column = static_cast<std::size_t>(col_);
  std::stable_sort(cells_.begin() + first, cells_.begin() + last + 1, [&](const auto& a, const auto& b) {
    return order == kSortAscending ? LiesBefore(a[column].text, b[column].text)
                                   : LiesBefore(b[column].text, a[column].text);
  });
  Appearance.Raise();
}

const Grid::Column& Grid::At(std::int32_t col) const {
  if (col < 0 || col >= Cols()) throw Errors::InvalidPropertyArrayIndex();
  return columns_[static_cast<std::size_t>(col)];
}

Grid::Column& Grid::At(std::int32_t col) { return const_cast<Column&>(std::as_const(*this).At(col)); }

const Grid::GridCell& Grid::At(std::int32_t row, std::int32_t col) const {
  if (row < 0 || row >= Rows() || col < 0 || col >= Cols()) throw Errors::InvalidPropertyArrayIndex();
  return cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
}

Grid::GridCell& Grid::At(std::int32_t row, std::int32_t col) {
  return const_cast<GridCell&>(std::as_const(*this).At(row, col));
}

void Grid::KeepSelectionInside() {
  const auto last_row = std::max(0, Rows() - 1);
  const auto last_col = std::max(0, Cols() - 1);
  row_ = std::min(row_, last_row);
  row_sel_ = std::min(row_sel_, last_row);
  col_ = std::min(col_, last_col);
  col_sel_ = std::min(col_sel_, last_col);
  Appearance.Raise();
}

}  // namespace mirelo::forms
