#include "worksheet/variant_arrays.h"

#include <cstdint>

#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "diagnostics/routine.h"

namespace mirelo {

namespace {

// Upper bound minus lower bound.
std::int32_t Span(const VariantArray& array) { return array.UBound() - array.LBound(); }

// One more element at the end, at bounds that start with 0.
void Lengthen(VariantArray& array) {
  if (array.LBound() != 0) throw Errors::SubscriptOutOfRange();
  array.ReDimPreserve(AddChecked(array.UBound(), 1));
}

}  // namespace

Variant VariantArrays::mPush(Variant& array, const Variant& value) {
  return Function<Variant>("Mirelo.frmMirelo.mPush", {}, [&](Frame& frame, Variant& result) {
    const Variant pushed = value;  // which may be the array itself
    if (array.IsArray()) {
      STEP(Lengthen(array.AsArray()));
    } else {
      STEP(array = VariantArray(0, 0));
    }
    STEP(array.AsArray()(array.AsArray().UBound()) = pushed);
    STEP(result = array);
    frame.pop();
  });
}

std::int16_t VariantArrays::Arr_Push(Variant& array, const Variant& value, std::int32_t lower) {
  return Function<std::int16_t>("Mirelo.frmMirelo.Arr_Push", 0, [&](Frame& frame, std::int16_t& count) {
    const Variant pushed = value;  // which may be the array itself
    std::int32_t more = 0;         // elements behind the first
    std::int32_t first = 0;
    if (pushed.IsArray()) STEP(more = Span(pushed.AsArray()));
    if (array.IsArray()) {
      STEP(first = AddChecked(array.AsArray().UBound(), 1));
      STEP(array.AsArray().ReDimPreserve(AddChecked(first, more)));
    } else {
      STEP(array = VariantArray(lower, AddChecked(lower, more)));
      STEP(first = lower);
    }
    if (pushed.IsArray()) {
      for (const std::int32_t i : frame.loop([&] { return Bounds{0, more}; })) {
        STEP(array.AsArray()(first + i) = pushed.AsArray()(pushed.AsArray().LBound() + i));
      }
    } else {
      STEP(array.AsArray()(first) = pushed);
    }
    STEP(count = RoundToInt16(more + 1));
    frame.pop();
  });
}

std::int16_t VariantArrays::Arr_Search(const Variant& array, const Variant& value) {
  return Function<std::int16_t>("Mirelo.frmMirelo.Arr_Search", -1, [&](Frame& frame, std::int16_t& found) {
    if (!array.IsArray()) return frame.pop();
    for (const std::int32_t i : frame.loop([&] {
           return Bounds{array.AsArray().LBound(), array.AsArray().UBound()};
         })) {
      if (frame.test([&] { return array.AsArray()(i) == value; })) {
        STEP(found = RoundToInt16(i));
        break;
      }
    }
    frame.pop();
  });
}

std::int16_t VariantArrays::Arr_Count(const Variant& array) {
  return Function<std::int16_t>("Mirelo.frmMirelo.Arr_Count", -1, [&](Frame& frame, std::int16_t& count) {
    if (array.IsArray()) STEP(count = RoundToInt16(Span(array.AsArray()) + 1));
    frame.pop();
  });
}

std::int16_t VariantArrays::ArrayDimensions(const Variant& array) {
  return static_cast<std::int16_t>(array.IsArray() ? array.AsArray().Dimensions() : 0);
}

}  // namespace mirelo
