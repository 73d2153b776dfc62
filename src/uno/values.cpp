#include "uno/values.h"

#include <uno/sequence2.h>
#include <com/sun/star/bridge/oleautomation/Date.hpp>
#include <com/sun/star/script/XInvocation.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/Sequence.hxx>
#include <com/sun/star/uno/Type.hxx>
#include <com/sun/star/uno/TypeClass.hpp>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <typelib/typedescription.hxx>
#include <utility>

#include "automation/runtime_error.h"
#include "uno/invocation.h"
#include "uno/text.h"

namespace mirelo::uno {

namespace {

using css::uno::Any;
using css::uno::Sequence;
using css::uno::Type;
using css::uno::TypeClass;
using css::uno::TypeDescription;
using OfficeDate = css::bridge::oleautomation::Date;

std::int32_t CountOf(const VariantArray& array, int dimension) {
  return array.UBound(dimension) - array.LBound(dimension) + 1;
}

Sequence<Any> RowOf(const VariantArray& array, std::int32_t row) {
  Sequence<Any> cells(CountOf(array, 2));
  Any* cell = cells.getArray();
  for (std::int32_t column = array.LBound(2); column <= array.UBound(2); ++column) {
    *cell++ = ToOffice(array(row, column));
  }
  return cells;
}

Any ArrayToOffice(const VariantArray& array) {
  if (array.Dimensions() == 2) {
    Sequence<Sequence<Any>> rows(CountOf(array, 1));
    Sequence<Any>* next = rows.getArray();
    for (std::int32_t row = array.LBound(1); row <= array.UBound(1); ++row) *next++ = RowOf(array, row);
    return Any(rows);
  }
  Sequence<Any> elements(CountOf(array, 1));
  Any* element = elements.getArray();
  for (std::int32_t i = array.LBound(); i <= array.UBound(); ++i) *element++ = ToOffice(array(i));
  return Any(elements);
}

// The elements of a sequence, of whichever type: Basic gives an array the one that its elements have in
// common.
Sequence<Any> Elements(const Any& value) {
  const TypeDescription sequence(value.getValueType());
  const Type type(reinterpret_cast<const typelib_IndirectTypeDescription*>(sequence.get())->pType);
  const auto* const held = *static_cast<const uno_Sequence* const*>(value.getValue());
  const std::ptrdiff_t size = TypeDescription(type).get()->nSize;
  Sequence<Any> elements(held->nElements);
  for (sal_Int32 i = 0; i < held->nElements; ++i)
    elements.getArray()[i] = Any(static_cast<const void*>(held->elements + i * size), type);
  return elements;
}

bool IsSequence(const Any& value) { return value.getValueTypeClass() == TypeClass::TypeClass_SEQUENCE; }

// How long the rows are, where the elements are rows of one length; else 0.
sal_Int32 WidthOf(const Sequence<Any>& rows) {
  sal_Int32 width = 0;
  for (const Any& row : rows) {
    const sal_Int32 length = IsSequence(row) ? Elements(row).getLength() : 0;
    if (length == 0 || (width != 0 && length != width)) return 0;
    width = length;
  }
  return width;
}

VariantArray ArrayFromOffice(const Any& value) {
  const Sequence<Any> elements = Elements(value);
  const sal_Int32 count = elements.getLength();
  if (count == 0) return {};
  if (const sal_Int32 width = WidthOf(elements); width > 0) {
    VariantArray table(1, count, 1, width);
    for (sal_Int32 r = 0; r < count; ++r) {
      const Sequence<Any> row = Elements(elements[r]);
      for (sal_Int32 c = 0; c < width; ++c) table(r + 1, c + 1) = FromOffice(row[c]);
    }
    return table;
  }
  VariantArray list(0, count - 1);
  for (sal_Int32 i = 0; i < count; ++i) list(i) = FromOffice(elements[i]);
  return list;
}

Variant NumberFromOffice(const Any& value) {
  std::int16_t small = 0;
  if (value >>= small) return small;
  std::int32_t whole = 0;
  if (value >>= whole) return whole;
  double number = 0;
  if (value >>= number) return number;
  throw Errors::TypeMismatch();
}

Meaning& OfficeObjects() {
  static Meaning meaning;
  return meaning;
}

Variant ObjectFromOffice(const Any& value) {
  // Asked for by name, since objects are compared by what they answer then.
  const css::uno::Reference<css::uno::XInterface> object(value, css::uno::UNO_QUERY);
  if (!object.is()) return Variant(std::shared_ptr<Object>());
  auto ours = ObjectBehind(object);
  if (ours == nullptr && OfficeObjects()) ours = OfficeObjects()(object);
  if (ours == nullptr) throw Errors::TypeMismatch();
  return Variant(std::move(ours));
}

}  // namespace

void TakeOfficeObjectsFor(Meaning meaning) { OfficeObjects() = std::move(meaning); }

Any ToOffice(const Variant& value) {
  switch (value.type()) {
    case Variant::Type::Empty:
      return {};
    case Variant::Type::Integer:
      return Any(sal_Int16{value.ToInt16()});
    case Variant::Type::Long:
      return Any(sal_Int32{value.ToInt32()});
    case Variant::Type::Double:
      return Any(value.ToDouble());
    case Variant::Type::Boolean:
      return Any(value.ToBoolean());
    case Variant::Type::Date:
      return Any(OfficeDate(value.ToDouble()));
    case Variant::Type::String:
      return Any(OfficeText(*value.IfText()));
    case Variant::Type::Object:
      return Any(InvocationOf(value.AsObject()));
    case Variant::Type::Array:
      return ArrayToOffice(value.AsArray());
  }
  return {};
}

Variant FromOffice(const Any& value) {
  switch (value.getValueTypeClass()) {
    case TypeClass::TypeClass_VOID:
      return {};
    case TypeClass::TypeClass_BOOLEAN:
      return value.get<bool>();
    case TypeClass::TypeClass_STRING:
      return TextOf(value.get<rtl::OUString>());
    case TypeClass::TypeClass_SEQUENCE:
      return ArrayFromOffice(value);
    case TypeClass::TypeClass_INTERFACE:
      return ObjectFromOffice(value);
    case TypeClass::TypeClass_STRUCT:
      if (OfficeDate date; value >>= date) return Date{date.Value};
      throw Errors::TypeMismatch();
    default:
      return NumberFromOffice(value);
  }
}

}  // namespace mirelo::uno
