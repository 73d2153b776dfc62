// Ranges of the spreadsheet as arrays.

#include <cstdint>
#include <memory>
#include <string_view>

#include "automation/variant.h"
#include "diagnostics/routine.h"
#include "host/excel/range.h"
#include "worksheet/variant_arrays.h"

namespace mirelo {

namespace {

using host::excel::Range;

enum class Taken { Nothing, AsNumber, AsItIs };

// What a single column takes over, by the type of the value. Dates are not taken.
Taken TakenFrom(const Variant& value) {
  const std::string_view type = value.TypeName();
  if (type == "Integer" || type == "Double") return Taken::AsNumber;
  return type == "String" ? Taken::AsItIs : Taken::Nothing;
}

Variant Transposed(const VariantArray& array) {
  VariantArray result(array.LBound(2), array.UBound(2), array.LBound(1), array.UBound(1));
  for (std::int32_t i = array.LBound(1); i <= array.UBound(1); ++i) {
    for (std::int32_t j = array.LBound(2); j <= array.UBound(2); ++j) result(j, i) = array(i, j);
  }
  return result;
}

}  // namespace

Variant VariantArrays::Range2Array(const std::shared_ptr<Range>& range) {
  return Function<Variant>("Mirelo.frmMirelo.Range2Array", {}, [&](Frame& frame, Variant& result) {
    std::int32_t rows = 0;
    std::int32_t columns = 0;
    VariantArray array;
    STEP(columns = Referred(range.get()).Columns()->Count());
    STEP(rows = Referred(range.get()).Rows()->Count());
    if (columns < 2) {
      STEP(array = VariantArray(1, rows));
      for (const std::int32_t row : frame.loop([&] { return Bounds{1, rows}; })) {
        Variant value;
        Taken taken = Taken::Nothing;
        STEP(value = Referred(range.get()).Item(row, 1)->Value());
        STEP(taken = TakenFrom(value));
        if (taken == Taken::AsNumber) {
          STEP(array(row) = value.ToDouble());
        } else if (taken == Taken::AsItIs) {
          STEP(array(row) = value);
        }
      }
    } else {
      STEP(array = VariantArray(1, columns, 1, rows));
      for (const std::int32_t column : frame.loop([&] { return Bounds{1, columns}; })) {
        for (const std::int32_t row : frame.loop([&] { return Bounds{1, rows}; })) {
          STEP(array(column, row) = Referred(range.get()).Item(row, column)->Value());
        }
      }
    }
    STEP(result = array);
    frame.pop();
  });
}

Variant VariantArrays::Array2Range(const Variant& array) {
  return Function<Variant>("Mirelo.frmMirelo.Array2Range", {}, [&](Frame& frame, Variant& result) {
    STEP(result = Transposed(array.AsArray()));
    frame.pop();
  });
}

}  // namespace mirelo
