#include "com/arrays.h"

#include <cstddef>
#include <cstdint>
#include <memory>

#include "automation/runtime_error.h"
#include "com/errors.h"
#include "com/values.h"

namespace mirelo::com {

namespace {

struct Destroying {
  void operator()(SAFEARRAY* array) const { ::SafeArrayDestroy(array); }
};
using OwnedArray = std::unique_ptr<SAFEARRAY, Destroying>;

// The elements of an array, for as long as nobody may dimension it anew.
class Elements {
 public:
  explicit Elements(SAFEARRAY* array) : array_(array) {
    Require(::SafeArrayAccessData(array_, reinterpret_cast<void**>(&data_)));
  }
  ~Elements() { ::SafeArrayUnaccessData(array_); }
  Elements(const Elements&) = delete;
  Elements& operator=(const Elements&) = delete;

  std::byte* At(std::size_t place) const { return data_ + place * ::SafeArrayGetElemsize(array_); }

 private:
  SAFEARRAY* array_;
  std::byte* data_ = nullptr;
};

struct Bounds {
  LONG lower = 0;
  LONG upper = -1;
};

Bounds BoundsOf(SAFEARRAY* array, UINT dimension) {
  Bounds bounds;
  Require(::SafeArrayGetLBound(array, dimension, &bounds.lower));
  Require(::SafeArrayGetUBound(array, dimension, &bounds.upper));
  return bounds;
}

SAFEARRAYBOUND BoundOf(const VariantArray& array, int dimension) {
  const std::int32_t lower = array.LBound(dimension);
  return {static_cast<ULONG>(std::int64_t{array.UBound(dimension)} - lower + 1), lower};
}

// One element stands in the array as a reference to it would point at it.
Variant ElementFrom(VARTYPE type, std::byte* place) {
  VARIANT reference;
  ::VariantInit(&reference);
  reference.vt = static_cast<VARTYPE>(type | VT_BYREF);
  reference.byref = place;
  return FromClient(reference);
}

void ElementTo(const Variant& value, VARTYPE type, std::byte* place) {
  VARIANT reference;
  ::VariantInit(&reference);
  reference.vt = static_cast<VARTYPE>(type | VT_BYREF);
  reference.byref = place;
  WriteBack(value, reference);
}

VariantArray ListFrom(VARTYPE type, SAFEARRAY* array) {
  const Bounds bounds = BoundsOf(array, 1);
  if (bounds.upper < bounds.lower) return {};
  VariantArray list(bounds.lower, bounds.upper);
  const Elements elements(array);
  std::size_t place = 0;
  for (std::int64_t i = bounds.lower; i <= bounds.upper; ++i) {
    list(static_cast<std::int32_t>(i)) = ElementFrom(type, elements.At(place++));
  }
  return list;
}

VariantArray TableFrom(VARTYPE type, SAFEARRAY* array) {
  const Bounds rows = BoundsOf(array, 1);
  const Bounds columns = BoundsOf(array, 2);
  if (rows.upper < rows.lower || columns.upper < columns.lower) return {};
  VariantArray table(rows.lower, rows.upper, columns.lower, columns.upper);
  const Elements elements(array);
  std::size_t place = 0;  // column after column
  for (std::int64_t c = columns.lower; c <= columns.upper; ++c) {
    for (std::int64_t r = rows.lower; r <= rows.upper; ++r) {
      table(static_cast<std::int32_t>(r), static_cast<std::int32_t>(c)) =
          ElementFrom(type, elements.At(place++));
    }
  }
  return table;
}

}  // namespace

SAFEARRAY* ArrayToClient(const VariantArray& array, VARTYPE element) {
  SAFEARRAYBOUND bounds[2] = {BoundOf(array, 1), {}};
  const int dimensions = array.Dimensions();
  if (dimensions == 2) bounds[1] = BoundOf(array, 2);
  OwnedArray made(::SafeArrayCreate(element, static_cast<UINT>(dimensions), bounds));
  if (made == nullptr) throw Errors::OutOfMemory();
  const Elements elements(made.get());
  std::size_t place = 0;
  if (dimensions == 1) {
    for (std::int64_t i = array.LBound(); i <= array.UBound(); ++i) {
      ElementTo(array(static_cast<std::int32_t>(i)), element, elements.At(place++));
    }
  } else {
    for (std::int64_t c = array.LBound(2); c <= array.UBound(2); ++c) {
      for (std::int64_t r = array.LBound(1); r <= array.UBound(1); ++r) {
        ElementTo(array(static_cast<std::int32_t>(r), static_cast<std::int32_t>(c)), element,
                  elements.At(place++));
      }
    }
  }
  return made.release();  // which is let go of once its elements are
}

VariantArray ArrayFromClient(SAFEARRAY* array) {
  if (array == nullptr) return {};
  VARTYPE type = VT_EMPTY;
  Require(::SafeArrayGetVartype(array, &type));
  if (type == VT_RECORD) throw Errors::TypeMismatch();  // Windows would ask what it is made of
  switch (::SafeArrayGetDim(array)) {
    case 1:
      return ListFrom(type, array);
    case 2:
      return TableFrom(type, array);
    default:
      throw Errors::TypeMismatch();
  }
}

}  // namespace mirelo::com
