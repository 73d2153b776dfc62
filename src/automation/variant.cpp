#include "automation/variant.h"

#include <utility>

#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/text.h"

namespace mirelo {

namespace {

// 1 January 100 to the end of 31 December 9999.
constexpr double kFirstSerial = -657'434;
constexpr double kEndSerial = 2'958'466;

double NumberOf(std::string_view text) {
  const std::optional<double> number = ParseNumber(text);
  if (!number) throw Errors::TypeMismatch();
  return *number;
}

Date CheckedDate(double serial) {
  if (!(serial > kFirstSerial - 1 && serial < kEndSerial)) throw Errors::Overflow();
  return {serial};
}

std::string RegionalNumberText(double value, const RegionalFormat& regional) {
  std::string text = NumberText(value);
  const std::size_t point = text.find('.');
  if (point != std::string::npos) text.replace(point, 1, regional.decimal_separator);
  return text;
}

}  // namespace

Variant::Variant(VariantArray value) : value_(std::make_shared<VariantArray>(std::move(value))) {}

std::string_view Variant::TypeName() const {
  switch (type()) {
    case Type::Empty:
      return "Empty";
    case Type::Integer:
      return "Integer";
    case Type::Long:
      return "Long";
    case Type::Double:
      return "Double";
    case Type::Boolean:
      return "Boolean";
    case Type::Date:
      return "Date";
    case Type::String:
      return "String";
    case Type::Object:
      return AsObject() ? AsObject()->TypeName() : "Nothing";
    case Type::Array:
      return "Variant()";
  }
  return {};
}

std::int16_t Variant::ToInt16() const { return RoundToInt16(ToDouble()); }

std::int32_t Variant::ToInt32() const { return RoundToInt32(ToDouble()); }

double Variant::ToDouble() const {
  switch (type()) {
    case Type::Empty:
      return 0;
    case Type::Integer:
      return std::get<std::int16_t>(value_);
    case Type::Long:
      return std::get<std::int32_t>(value_);
    case Type::Double:
      return std::get<double>(value_);
    case Type::Boolean:
      return std::get<bool>(value_) ? -1 : 0;
    case Type::Date:
      return std::get<mirelo::Date>(value_).serial;
    case Type::String:
      return NumberOf(std::get<std::string>(value_));
    case Type::Object:
    case Type::Array:
      break;
  }
  throw Errors::TypeMismatch();
}

bool Variant::ToBoolean() const {
  if (const std::string* text = IfText()) {
    if (EqualText(*text, "True")) return true;
    if (EqualText(*text, "False")) return false;
  }
  return ToDouble() != 0;
}

std::string Variant::ToText(const RegionalFormat& regional) const {
  switch (type()) {
    case Type::Empty:
      return {};
    case Type::Integer:
      return NumberText(std::get<std::int16_t>(value_));
    case Type::Long:
      return NumberText(std::get<std::int32_t>(value_));
    case Type::Double:
      return RegionalNumberText(std::get<double>(value_), regional);
    case Type::Boolean:
      return std::get<bool>(value_) ? "True" : "False";
    case Type::Date:
      return GeneralDate(std::get<mirelo::Date>(value_), regional);
    case Type::String:
      return std::get<std::string>(value_);
    case Type::Object:
    case Type::Array:
      break;
  }
  throw Errors::TypeMismatch();
}

mirelo::Date Variant::ToDate(const RegionalFormat& regional) const {
  if (const std::string* text = IfText()) {
    if (const std::optional<mirelo::Date> date = ParseDate(*text, regional)) return *date;
    const std::optional<double> number = ParseNumber(*text, regional);
    if (!number) throw Errors::TypeMismatch();
    return CheckedDate(*number);
  }
  return CheckedDate(ToDouble());
}

const std::shared_ptr<mirelo::Object>& Variant::AsObject() const {
  const auto* object = std::get_if<std::shared_ptr<mirelo::Object>>(&value_);
  if (object == nullptr) throw Errors::ObjectRequired();
  return *object;
}

const VariantArray& Variant::AsArray() const {
  const auto* array = std::get_if<std::shared_ptr<VariantArray>>(&value_);
  if (array == nullptr) throw Errors::TypeMismatch();
  return **array;
}

VariantArray& Variant::AsArray() {
  auto* array = std::get_if<std::shared_ptr<VariantArray>>(&value_);
  if (array == nullptr) throw Errors::TypeMismatch();
  if (array->use_count() > 1) *array = std::make_shared<VariantArray>(**array);
  return **array;
}

bool operator==(const Variant& a, const Variant& b) {
  const auto is_value = [](const Variant& v) { return !v.IsObject() && !v.IsArray(); };
  if (!is_value(a) || !is_value(b)) throw Errors::TypeMismatch();

  const std::string* text_a = a.IfText();
  const std::string* text_b = b.IfText();
  if (text_a != nullptr && text_b != nullptr) return *text_a == *text_b;
  if (text_a != nullptr && b.IsEmpty()) return text_a->empty();
  if (text_b != nullptr && a.IsEmpty()) return text_b->empty();

  const auto number = [](const Variant& v) { return v.IfText() ? ParseNumber(*v.IfText()) : v.ToDouble(); };
  const std::optional<double> number_a = number(a);
  return number_a.has_value() && number_a == number(b);
}

}  // namespace mirelo
