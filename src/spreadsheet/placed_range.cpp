#include "spreadsheet/placed_range.h"

#include <limits>

#include "automation/runtime_error.h"
#include "spreadsheet/address.h"
#include "spreadsheet/area_rules.h"
#include "spreadsheet/errors.h"

namespace mirelo::spreadsheet {

PlacedRange::RangePtr PlacedRange::Cells() { return At(area()); }

PlacedRange::RangePtr PlacedRange::Cells(std::int32_t row, std::int32_t column) { return Item(row, column); }

PlacedRange::RangePtr PlacedRange::Item(std::int32_t row, std::int32_t column) {
  return At(AreaOf(std::int64_t{Row()} + row - 1, std::int64_t{Column()} + column - 1, 1, 1));
}

PlacedRange::RangePtr PlacedRange::Item(std::int32_t index) {
  const std::int64_t offset = std::int64_t{index} - 1;
  if (view_ == View::Rows) return At(AreaOf(Row() + offset, Column(), 1, area().Columns()), view_);
  if (view_ == View::Columns) return At(AreaOf(Row(), Column() + offset, area().Rows(), 1), view_);
  return At(CellByNumber(area(), index));
}

PlacedRange::RangePtr PlacedRange::Resize(std::int32_t rows, std::int32_t columns) {
  return At(AreaOf(Row(), Column(), rows, columns));
}

PlacedRange::RangePtr PlacedRange::Rows() { return At(area(), View::Rows); }
PlacedRange::RangePtr PlacedRange::Columns() { return At(area(), View::Columns); }

std::int32_t PlacedRange::Count() {
  if (view_ == View::Rows) return area().Rows();
  if (view_ == View::Columns) return area().Columns();
  const std::int64_t count = area().Cells();
  if (count > std::numeric_limits<std::int32_t>::max()) throw Errors::Overflow();
  return static_cast<std::int32_t>(count);
}

std::string PlacedRange::Address(bool row_absolute, bool column_absolute) {
  return AddressText(area(), row_absolute, column_absolute);
}

PlacedRange::RangePtr PlacedRange::EntireColumn() {
  return At({1, area().first_column, kRows, area().last_column}, View::Columns);
}

PlacedRange::RangePtr PlacedRange::EntireRow() {
  return At({area().first_row, 1, area().last_row, kColumns}, View::Rows);
}

void PlacedRange::CheckIsForColumns() const {
  if (view_ != View::Columns && !area().IsWholeColumns())
    throw Refused("Only columns can be fitted to texts.");
}

void PlacedRange::CheckDeletes(host::excel::XlDeleteShiftDirection shift) const {
  if (shift != host::excel::xlShiftUp) throw Refused("Cells can only move up.");
  if (area().IsWholeColumns() && !area().IsWholeRows())
    throw Refused("Whole columns have no cells below them.");
}

void PlacedRange::CheckHoldsComment() const {
  if (area().Cells() != 1) throw Refused("A comment is laid on one cell at a time.");
}

}  // namespace mirelo::spreadsheet
