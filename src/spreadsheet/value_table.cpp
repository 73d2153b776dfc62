#include "spreadsheet/value_table.h"

#include <algorithm>

#include "automation/runtime_error.h"
#include "spreadsheet/typed/cell_input.h"

namespace mirelo::spreadsheet {

ValueTable::ValueTable(const Variant& value) : scalar_(&value) {
  if (!value.IsArray()) return;
  array_ = &value.AsArray();
  is_row_ = array_->Dimensions() == 1;
  first_row_ = is_row_ ? 0 : array_->LBound(1);
  first_column_ = array_->LBound(is_row_ ? 1 : 2);
  rows_ = is_row_ ? 1 : array_->UBound(1) - first_row_ + 1;
  columns_ = array_->UBound(is_row_ ? 1 : 2) - first_column_ + 1;
  if (columns_ == 0) throw Errors::TypeMismatch();
}

void ValueTable::Check(std::int32_t rows, std::int32_t columns) const {
  if (array_ == nullptr) return CheckCellInput(*scalar_);
  for (std::int32_t row = 0; row < std::min(rows, rows_); ++row) {
    for (std::int32_t column = 0; column < std::min(columns, columns_); ++column)
      CheckCellInput(*At(row, column));
  }
}

}  // namespace mirelo::spreadsheet
