#pragma once

#include <bit>
#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "automation/array.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "automation_server/member.h"

namespace mirelo::automation_server {

// How a type of the classes' members crosses to clients and back. A type that has no Crossing cannot stand in
// a member's signature: the compiler refuses the row.
//
//   kType                          what the member declares
//   From(const Variant&)           what a parameter of this type is given
//   To(T)                          what the client is given; lacking for types that only go in
template <class T>
struct Crossing;

template <class T>
concept GoesIn = requires(const Variant& value) {
  Crossing<std::remove_cvref_t<T>>::From(value);
};
template <class T>
concept GoesOut = requires(std::remove_cvref_t<T> value) {
  Crossing<std::remove_cvref_t<T>>::To(std::move(value));
};
template <class T>
concept IsResult = std::is_void_v<T> || GoesOut<T>;

template <>
struct Crossing<Variant> {
  static constexpr ValueType kType = ValueType::kVariant;
  static const Variant& From(const Variant& value) { return value; }
  static Variant To(Variant value) { return value; }
};

template <>
struct Crossing<std::int16_t> {
  static constexpr ValueType kType = ValueType::kInteger;
  static std::int16_t From(const Variant& value) { return value.ToInt16(); }
  static Variant To(std::int16_t value) { return value; }
};

template <>
struct Crossing<std::int32_t> {
  static constexpr ValueType kType = ValueType::kLong;
  static std::int32_t From(const Variant& value) { return value.ToInt32(); }
  static Variant To(std::int32_t value) { return value; }
};

// Clients know no unsigned numbers: the same 32 bits, &H80000001 being negative.
template <>
struct Crossing<std::uint32_t> {
  static constexpr ValueType kType = ValueType::kLong;
  static std::uint32_t From(const Variant& value) { return std::bit_cast<std::uint32_t>(value.ToInt32()); }
  static Variant To(std::uint32_t value) { return std::bit_cast<std::int32_t>(value); }
};

template <class T>
requires std::is_enum_v<T>
struct Crossing<T> {
  static constexpr ValueType kType = ValueType::kLong;
  static T From(const Variant& value) { return static_cast<T>(value.ToInt32()); }
  static Variant To(T value) { return static_cast<std::int32_t>(value); }
};

template <>
struct Crossing<double> {
  static constexpr ValueType kType = ValueType::kDouble;
  static double From(const Variant& value) { return value.ToDouble(); }
  static Variant To(double value) { return value; }
};

// Values know no single-precision numbers; where clients are told of one by its type, what carries the call
// makes it one again.
template <>
struct Crossing<float> {
  static constexpr ValueType kType = ValueType::kSingle;
  static Variant To(float value) { return static_cast<double>(value); }
};

template <>
struct Crossing<bool> {
  static constexpr ValueType kType = ValueType::kBoolean;
  static bool From(const Variant& value) { return value.ToBoolean(); }
  static Variant To(bool value) { return value; }
};

template <>
struct Crossing<std::string> {
  static constexpr ValueType kType = ValueType::kText;
  static std::string From(const Variant& value) { return value.ToText(); }
  static Variant To(std::string value) { return Variant(std::move(value)); }
};

template <>
struct Crossing<std::string_view> {
  static constexpr ValueType kType = ValueType::kText;
  static std::string From(const Variant& value) { return value.ToText(); }
};

// Null for a reference that refers to nothing. Error 424 for a value that is no reference, 13 for an object
// of another class.
template <std::derived_from<Object> T>
struct Crossing<std::shared_ptr<T>> {
  static constexpr ValueType kType = ValueType::kObject;
  static std::shared_ptr<T> From(const Variant& value) {
    auto object = std::dynamic_pointer_cast<T>(value.AsObject());
    if (object == nullptr && value.AsObject() != nullptr) throw Errors::TypeMismatch();
    return object;
  }
  static Variant To(std::shared_ptr<T> value) { return Variant(std::move(value)); }
};

// An object that the member uses but does not keep: never null.
template <std::derived_from<Object> T>
struct Crossing<T> {
  static constexpr ValueType kType = ValueType::kObject;
  static std::shared_ptr<T> From(const Variant& value) {
    auto object = Crossing<std::shared_ptr<T>>::From(value);
    Referred(object.get());
    return object;
  }
};

// Texts that a member fills in. What stood in the argument before does not matter. An unallocated array
// crosses as one without elements.
template <>
struct Crossing<Array<std::string>> {
  static constexpr ValueType kType = ValueType::kArray;
  static Array<std::string> From(const Variant&) { return {}; }
  static Variant To(const Array<std::string>& texts) {
    if (!texts.IsAllocated()) return VariantArray();
    VariantArray array(texts.LBound(), texts.UBound());
    for (std::int32_t i = texts.LBound(); i <= texts.UBound(); ++i) array(i) = Variant(texts(i));
    return array;
  }
};

// The class or the enumeration that a type declares beside its kType; null for other types.
template <class T>
struct Declares {
  static const std::type_info* Type() {
    if constexpr (std::is_enum_v<T> || std::derived_from<T, Object>) return &typeid(T);
    return nullptr;
  }
};
template <std::derived_from<Object> T>
struct Declares<std::shared_ptr<T>> : Declares<T> {};

}  // namespace mirelo::automation_server
