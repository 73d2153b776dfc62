#include "spreadsheet/area_rules.h"

#include <string>

#include "spreadsheet/address.h"
#include "spreadsheet/errors.h"

namespace mirelo::spreadsheet {

namespace {

// Division that rounds down, for counting both ways from an area's first cell.
std::int64_t FloorDivide(std::int64_t a, std::int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }

// "5" stands for "5:5", "B" for "B:B".
Area BandAt(std::string_view text) {
  if (text.find(':') != std::string_view::npos) return AreaAt(text);
  return AreaAt(std::string(text) + ":" + std::string(text));
}

}  // namespace

Area AreaOf(std::int64_t row, std::int64_t column, std::int64_t rows, std::int64_t columns) {
  const bool is_on_sheet = rows >= 1 && columns >= 1 && row >= 1 && column >= 1 && row + rows - 1 <= kRows &&
                           column + columns - 1 <= kColumns;
  if (!is_on_sheet) throw NotOnSheet();
  return {static_cast<std::int32_t>(row), static_cast<std::int32_t>(column),
          static_cast<std::int32_t>(row + rows - 1), static_cast<std::int32_t>(column + columns - 1)};
}

Area CellByNumber(const Area& area, std::int32_t number) {
  const std::int64_t offset = std::int64_t{number} - 1;
  const std::int64_t down = FloorDivide(offset, area.Columns());
  return AreaOf(area.first_row + down, area.first_column + offset - down * area.Columns(), 1, 1);
}

Area AreaAt(std::string_view address) {
  const auto area = ParseAddress(address);
  if (!area) throw Refused("\"" + std::string(address) + "\" is no address of cells.");
  return *area;
}

Area RowsAt(std::string_view rows) {
  const Area area = BandAt(rows);
  if (!area.IsWholeRows()) throw Refused("\"" + std::string(rows) + "\" names no rows.");
  return area;
}

Area ColumnsAt(std::string_view columns) {
  const Area area = BandAt(columns);
  if (!area.IsWholeColumns()) throw Refused("\"" + std::string(columns) + "\" names no columns.");
  return area;
}

}  // namespace mirelo::spreadsheet
