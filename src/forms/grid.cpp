#include "forms/grid.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/text.h"

namespace mirelo::forms {

namespace {

struct Header {
  std::string text;
  Grid::Alignment alignment = Grid::Alignment::General;
};

std::optional<Grid::Alignment> AlignmentOf(char sign) {
  switch (sign) {
    case '<':
      return Grid::Alignment::Left;
    case '^':
      return Grid::Alignment::Center;
    case '>':
      return Grid::Alignment::Right;
    case '=':
      return Grid::Alignment::CenteredHeader;
    default:
      return std::nullopt;
  }
}

Header ParseHeader(std::string_view piece) {
  piece = Trim(piece);
  const auto alignment = piece.empty() ? std::nullopt : AlignmentOf(piece.front());
  if (!alignment) return {std::string(piece)};
  return {std::string(Trim(piece.substr(1))), *alignment};
}

// What a row is sorted by.
struct SortKey {
  std::optional<double> number;
  std::string_view text;
  std::size_t row = 0;
};

bool LiesBefore(const SortKey& a, const SortKey& b) {
  if (a.number && b.number) return *a.number < *b.number;
  if (a.number || b.number) return a.number.has_value();
  return StrComp(a.text, b.text, Compare::Text) < 0;
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
  for (std::size_t c = 0; c < pieces.size(); ++c) {
    Header header = ParseHeader(pieces[c]);
    cells_[0][c].text = std::move(header.text);
    columns_[c].alignment = header.alignment;
  }
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
  if (Rows() <= FixedRows() || Cols() == 0) return;
  auto first = std::max(std::min(row_, row_sel_), FixedRows());
  auto last = std::max(row_, row_sel_);
  if (first >= last) {
    first = FixedRows();
    last = Rows() - 1;
  }
  std::vector<SortKey> keys;
  for (auto row = first; row <= last; ++row) {
    const std::string& text = TextMatrix(row, col_);
    keys.push_back({ParseNumber(text), text, static_cast<std::size_t>(row)});
  }
  std::stable_sort(keys.begin(), keys.end(), [&](const SortKey& a, const SortKey& b) {
    return order == kSortAscending ? LiesBefore(a, b) : LiesBefore(b, a);
  });
  std::vector<std::vector<GridCell>> sorted;
  sorted.reserve(keys.size());
  for (const SortKey& key : keys) sorted.push_back(std::move(cells_[key.row]));
  std::move(sorted.begin(), sorted.end(), cells_.begin() + first);
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
