#pragma once

#include <cstdint>

#include "automation/variant.h"

namespace mirelo::spreadsheet {

// What is written to a range of cells, seen as a table that starts at row 0, column 0: a single value, or an
// array as host::excel::Range::Value lays it on cells.
class ValueTable {
 public:
  // `value` outlives it, and is neither an object nor empty. Error 13 for an array without elements.
  explicit ValueTable(const Variant& value);

  // Null where the array has no element.
  const Variant* At(std::int32_t row, std::int32_t column) const {
    if (array_ == nullptr) return scalar_;
    if (rows_ == 1) row = 0;
    if (columns_ == 1) column = 0;
    if (row >= rows_ || column >= columns_) return nullptr;
    return is_row_ ? &(*array_)(first_column_ + column)
                   : &(*array_)(first_row_ + row, first_column_ + column);
  }

  // Raises the error of the first value that a range of this size does not take.
  void Check(std::int32_t rows, std::int32_t columns) const;

 private:
  const Variant* scalar_;
  const VariantArray* array_ = nullptr;
  bool is_row_ = false;
  std::int32_t first_row_ = 0;
  std::int32_t first_column_ = 0;
  std::int32_t rows_ = 1;
  std::int32_t columns_ = 1;
};

}  // namespace mirelo::spreadsheet
