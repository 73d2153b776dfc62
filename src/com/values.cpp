#include "com/values.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>

#include "automation/runtime_error.h"
#include "automation/wide_text.h"
#include "com/arrays.h"
#include "com/dispatch.h"
#include "com/errors.h"
#include "com/foreign.h"
#include "com/held.h"
#include "com/text.h"

namespace mirelo::com {

namespace {

// Of references to references: clients have few, and one that refers to itself has no end.
constexpr int kMostSteps = 8;

// The errors that cells of spreadsheets show.
struct CellError {
  std::int32_t number;
  const char* text;
};
constexpr std::array kCellErrors{
    CellError{2000, "#NULL!"}, CellError{2007, "#DIV/0!"}, CellError{2015, "#VALUE!"},
    CellError{2023, "#REF!"},  CellError{2029, "#NAME?"},  CellError{2036, "#NUM!"},
    CellError{2042, "#N/A"},
};

Variant ErrorText(SCODE code) {
  if (code == DISP_E_PARAMNOTFOUND) return {};
  const std::int32_t number = ErrorOf(code).Number();
  const auto* const known = std::ranges::find(kCellErrors, number, &CellError::number);
  if (known == kCellErrors.end()) throw Errors::TypeMismatch();
  return known->text;
}

// A number of a type that ours lack.
Variant NumberFrom(const VARIANT& value) {
  ClientValue number;
  Require(::VariantChangeType(number.get(), const_cast<VARIANT*>(&value), 0, VT_R8));
  return number->dblVal;
}

// A whole one, as the integer that it is where that is possible.
Variant WholeNumberFrom(const VARIANT& value) {
  Variant number = NumberFrom(value);
  using Limits = std::numeric_limits<std::int32_t>;
  if (number.ToDouble() < Limits::min() || number.ToDouble() > Limits::max()) return number;
  return number.ToInt32();
}

Variant ObjectFrom(IUnknown* object) {
  if (object == nullptr) return Variant(std::shared_ptr<Object>());
  if (auto ours = ObjectBehind(object)) return Variant(std::move(ours));
  auto called = Asked<IDispatch>(object, IID_IDispatch);
  if (!called) throw Errors::TypeMismatch();
  return Variant(std::shared_ptr<Object>(std::make_shared<Foreign>(std::move(called))));
}

Variant PlainFrom(const VARIANT& value) {
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return {};
    case VT_I2:
      return std::int16_t{value.iVal};
    case VT_UI1:
      return std::int16_t{value.bVal};
    case VT_I4:
    case VT_INT:
      return std::int32_t{value.lVal};
    case VT_R4:
      return double{value.fltVal};
    case VT_R8:
      return value.dblVal;
    case VT_BOOL:
      return value.boolVal != VARIANT_FALSE;
    case VT_DATE:
      return Date{value.date};
    case VT_BSTR:
      return NarrowText({value.bstrVal, ::SysStringLen(value.bstrVal)});
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return ObjectFrom(value.punkVal);
    case VT_ERROR:
      return ErrorText(value.scode);
    case VT_I1:
    case VT_UI2:
    case VT_UI4:
    case VT_UINT:
    case VT_I8:
    case VT_UI8:
      return WholeNumberFrom(value);
    case VT_CY:
    case VT_DECIMAL:
      return NumberFrom(value);
    default:
      throw Errors::TypeMismatch();
  }
}

// The types of which a reference points at so many bytes, which are all that a variant of it holds.
struct Size {
  VARTYPE type;
  std::size_t bytes;
};
constexpr std::array kSizes{
    Size{VT_I1, 1}, Size{VT_UI1, 1}, Size{VT_I2, 2},  Size{VT_UI2, 2},  Size{VT_BOOL, 2},
    Size{VT_I4, 4}, Size{VT_UI4, 4}, Size{VT_INT, 4}, Size{VT_UINT, 4}, Size{VT_R4, 4},
    Size{VT_I8, 8}, Size{VT_UI8, 8}, Size{VT_R8, 8},  Size{VT_CY, 8},   Size{VT_DATE, 8},
};

void PutPlain(VARIANT& value, const VARIANT& reference) {
  const auto type = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
  Require(::VariantChangeType(&value, &value, VARIANT_ALPHABOOL, type));
  switch (type) {
    case VT_BSTR:
      std::swap(*reference.pbstrVal, value.bstrVal);
      return;
    case VT_DISPATCH:
    case VT_UNKNOWN:
      std::swap(*reference.ppunkVal, value.punkVal);
      return;
    default:
      break;
  }
  const auto* const size = std::ranges::find(kSizes, type, &Size::type);
  if (size == kSizes.end()) throw Errors::TypeMismatch();
  std::memcpy(reference.byref, &value.llVal, size->bytes);
}

Held<IDispatch> ReferenceTo(const std::shared_ptr<Object>& object) {
  if (const auto* const foreign = dynamic_cast<const Foreign*>(object.get())) return foreign->reference();
  return DispatchOf(object);
}

constexpr USHORT kFixed = FADF_AUTO | FADF_STATIC | FADF_EMBEDDED | FADF_FIXEDSIZE;

void PutArray(const Variant& value, const VARIANT& reference) {
  const SAFEARRAY* const before = *reference.pparray;
  if (before != nullptr && (before->cLocks > 0 || (before->fFeatures & kFixed) != 0))
    throw RuntimeError(10, "This array is fixed or temporarily locked");
  const auto element = static_cast<VARTYPE>(reference.vt & VT_TYPEMASK);
  SAFEARRAY* const fresh = ArrayToClient(value.AsArray(), element);
  ::SafeArrayDestroy(std::exchange(*reference.pparray, fresh));
}

}  // namespace

VARIANT ClientValue::Release() {
  const VARIANT released = value_;
  ::VariantInit(&value_);
  return released;
}

void ToClient(const Variant& value, VARIANT& target) {
  ClientValue made;
  switch (value.type()) {
    case Variant::Type::Empty:
      break;
    case Variant::Type::Integer:
      made->iVal = value.ToInt16();
      made->vt = VT_I2;
      break;
    case Variant::Type::Long:
      made->lVal = value.ToInt32();
      made->vt = VT_I4;
      break;
    case Variant::Type::Double:
      made->dblVal = value.ToDouble();
      made->vt = VT_R8;
      break;
    case Variant::Type::Boolean:
      made->boolVal = value.ToBoolean() ? VARIANT_TRUE : VARIANT_FALSE;
      made->vt = VT_BOOL;
      break;
    case Variant::Type::Date:
      made->date = value.ToDouble();
      made->vt = VT_DATE;
      break;
    case Variant::Type::String:
      made->bstrVal = NewText(*value.IfText());
      made->vt = VT_BSTR;
      break;
    case Variant::Type::Object:
      made->pdispVal = ReferenceTo(value.AsObject()).Release();
      made->vt = VT_DISPATCH;
      break;
    case Variant::Type::Array:
      made->parray = ArrayToClient(value.AsArray());
      made->vt = VT_ARRAY | VT_VARIANT;
      break;
  }
  target = made.Release();
}

const VARIANT& Itself(const VARIANT& value) {
  const VARIANT* place = &value;
  for (int steps = 0; place->vt == (VT_BYREF | VT_VARIANT); ++steps) {
    if (place->pvarVal == nullptr || steps == kMostSteps) throw Errors::InvalidProcedureCall();
    place = place->pvarVal;
  }
  return *place;
}

Variant FromClient(const VARIANT& client) {
  const VARIANT& value = Itself(client);
  const bool is_reference = (value.vt & VT_BYREF) != 0;
  if (is_reference && value.byref == nullptr) throw Errors::InvalidProcedureCall();
  if ((value.vt & VT_ARRAY) != 0) return ArrayFromClient(is_reference ? *value.pparray : value.parray);
  if (!is_reference) return PlainFrom(value);
  ClientValue copied;
  Require(::VariantCopyInd(copied.get(), const_cast<VARIANT*>(&value)));
  return PlainFrom(*copied);
}

void WriteBack(const Variant& value, const VARIANT& reference) {
  if ((reference.vt & VT_BYREF) == 0) return;
  // A client's variable may be a reference by itself, to an array above all.
  const VARIANT& target = Itself(reference);
  ClientValue made;
  if ((target.vt & VT_BYREF) == 0) {
    ToClient(value, *made);
    std::swap(const_cast<VARIANT&>(target), *made);
    return;
  }
  if (target.byref == nullptr) throw Errors::InvalidProcedureCall();
  if ((target.vt & VT_ARRAY) != 0) return PutArray(value, target);
  ToClient(value, *made);
  PutPlain(*made, target);
}

}  // namespace mirelo::com
