#include "adapters/workbook/model/comment.h"

namespace mirelo::workbook {

std::shared_ptr<Comment> Comments::Find(std::int32_t row, std::int32_t column) const {
  const auto found = by_cell_.find({row, column});
  return found == by_cell_.end() ? nullptr : found->second;
}

void Comments::Set(std::int32_t row, std::int32_t column, Comment comment) {
  by_cell_[{row, column}] = std::make_shared<Comment>(std::move(comment));
}

void Comments::Clear(const Area& area) {
  std::erase_if(by_cell_, [&](const auto& entry) {
    const auto& [row, column] = entry.first;
    return area.Holds(row, column);
  });
}

void Comments::Delete(const Area& area) {
  ByCell left;
  for (auto& [cell, comment] : by_cell_) {
    auto [row, column] = cell;
    if (area.Holds(row, column)) continue;
    const bool moves = row > area.last_row && area.first_column <= column && column <= area.last_column;
    left[{moves ? row - area.Rows() : row, column}] = std::move(comment);
  }
  by_cell_ = std::move(left);
}

}  // namespace mirelo::workbook
