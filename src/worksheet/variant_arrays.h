#pragma once

#include <cstdint>
#include <memory>

#include "automation/variant.h"

namespace mirelo {

namespace host::excel {
class Range;
}

// Variant arrays that grow, searches in them, and ranges as arrays. A variant that was never filled is no
// array, which is a state like any other.
//
// Clients call these as members of frmMirelo, and failures are reported under its name. All but
// ArrayDimensions are routine frames: a failure is reported by the error handler and never raised.
struct VariantArrays {
  // Adds a value at the end of an array with lower bound 0, or makes an array of it; answers the array. Error
  // 9 for another lower bound or a second dimension.
  static Variant mPush(Variant& array, const Variant& value);
  // Adds a value, or the elements of an array one by one, at the end of an array, or makes an array with
  // that lower bound of them; answers how many were added. Error 9 for a second dimension.
  static std::int16_t Arr_Push(Variant& array, const Variant& value, std::int32_t lower);
  // The index of the first element that equals the value; -1 for none, and when it is no array.
  static std::int16_t Arr_Search(const Variant& array, const Variant& value);
  // The number of elements; -1 when it is no array.
  static std::int16_t Arr_Count(const Variant& array);
  // The number of dimensions, 0 when it is no array. It cannot fail.
  static std::int16_t ArrayDimensions(const Variant& array);

  // range_arrays.cpp

  // The values of a range: of a single column an array from 1 on with its numbers and texts, everything else
  // being left out; of more columns all values, with the column as first index and the row as second, both
  // from 1 on.
  static Variant Range2Array(const std::shared_ptr<host::excel::Range>& range);
  // The array of two dimensions with its indexes exchanged. Writes no cells.
  static Variant Array2Range(const Variant& array);
};

}  // namespace mirelo
