#include "spreadsheet/area_set.h"

#include <cstdint>
#include <optional>

namespace mirelo::spreadsheet {

namespace {

// The columns of an area that lie to the left and right of another one.
void AddBeside(const Area& area, const Area& other, AreaSet& to) {
  if (area.first_column < other.first_column)
    to.push_back({area.first_row, area.first_column, area.last_row, other.first_column - 1});
  if (area.last_column > other.last_column)
    to.push_back({area.first_row, other.last_column + 1, area.last_row, area.last_column});
}

// What becomes of an area whose columns are all among those of `gone`.
std::optional<Area> RowsAfterDeletion(Area area, const Area& gone) {
  if (gone.first_row <= area.first_row && area.last_row <= gone.last_row) return std::nullopt;
  const bool reaches_foot = area.last_row == kRows;
  const std::int32_t count = gone.Rows();
  const auto moved = [&](std::int32_t row, std::int32_t if_gone) {
    if (row < gone.first_row) return row;
    return row > gone.last_row ? row - count : if_gone;
  };
  area.first_row = moved(area.first_row, gone.first_row);
  area.last_row = reaches_foot ? kRows : moved(area.last_row, gone.first_row - 1);
  return area;
}

}  // namespace

AreaSet Without(const AreaSet& areas, const Area& gone) {
  AreaSet left;
  for (const Area& area : areas) {
    const auto shared = Shared(area, gone);
    if (!shared) {
      left.push_back(area);
      continue;
    }
    if (area.first_row < shared->first_row)
      left.push_back({area.first_row, area.first_column, shared->first_row - 1, area.last_column});
    AddBeside({shared->first_row, area.first_column, shared->last_row, area.last_column}, *shared, left);
    if (area.last_row > shared->last_row)
      left.push_back({shared->last_row + 1, area.first_column, area.last_row, area.last_column});
  }
  return left;
}

AreaSet AfterDeletion(const AreaSet& areas, const Area& gone) {
  AreaSet left;
  for (const Area& area : areas) {
    const auto moving = Shared(area, {1, gone.first_column, kRows, gone.last_column});
    if (!moving) {
      left.push_back(area);
      continue;
    }
    AddBeside(area, *moving, left);
    if (const auto moved = RowsAfterDeletion(*moving, gone)) left.push_back(*moved);
  }
  return left;
}

std::optional<Area> AfterDeletion(const Area& area, const Area& gone) {
  if (gone.first_column > area.first_column || gone.last_column < area.last_column) return area;
  return RowsAfterDeletion(area, gone);
}

}  // namespace mirelo::spreadsheet
