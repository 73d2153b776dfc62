#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "adapters/workbook/rules.h"
#include "spreadsheet/area.h"
#include "spreadsheet/style.h"

namespace mirelo::workbook {

// The note on a cell, and the box that shows it.
struct Comment {
  static constexpr std::int32_t kStandardWidth = 128;  // pixels
  static constexpr std::int32_t kStandardHeight = 74;

  std::string text;
  std::string author;
  std::int32_t width = kStandardWidth;
  std::int32_t height = kStandardHeight;
  bool visible = false;      // always, not only under the pointer
  Color color = kAutomatic;  // of the box
  std::string font_name = "Tahoma";
  double font_size = 8;  // points
  friend bool operator==(const Comment&, const Comment&) = default;
};

// The comments of a sheet's cells.
class Comments {
 public:
  // By row and column. Clients hold a comment whatever becomes of its cell.
  using ByCell = std::map<std::pair<std::int32_t, std::int32_t>, std::shared_ptr<Comment>>;

  const ByCell& all() const { return by_cell_; }
  // Calls visit(row, column, comment) for the comments of the area, row by row.
  template <class Visit>
  void ForEach(const Area& area, Visit&& visit) const {
    for (auto it = by_cell_.lower_bound({area.first_row, area.first_column}); it != by_cell_.end(); ++it) {
      const auto& [row, column] = it->first;
      if (row > area.last_row) return;
      if (area.Holds(row, column)) visit(row, column, *it->second);
    }
  }
  // Null when the cell has none.
  std::shared_ptr<Comment> Find(std::int32_t row, std::int32_t column) const;

  void Set(std::int32_t row, std::int32_t column, Comment comment);
  void Clear(const Area& area);
  // Takes the area's cells out of the sheet; those below move up.
  void Delete(const Area& area);

 private:
  ByCell by_cell_;
};

}  // namespace mirelo::workbook
