#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "automation/date.h"
#include "automation/regional_format.h"

namespace mirelo {

class VariantArray;

// Whatever a client may hold by reference: the spreadsheet's objects, quotes, collections.
class Object {
 public:
  virtual ~Object() = default;
  // The class name that clients see, for example "cQTDatas".
  virtual std::string_view TypeName() const = 0;
};

// A value of run-time type, as the public interface passes them: empty, 16-bit or 32-bit integer, 64-bit
// float, boolean, date, text (UTF-8), object reference, or array with its bounds. Copies are independent;
// arrays are shared until one side writes.
//
// Conversions raise error 13 (type mismatch) where no conversion exists, 6 where the number does not fit.
class Variant {
 public:
  enum class Type { Empty, Integer, Long, Double, Boolean, Date, String, Object, Array };

  Variant() = default;
  Variant(std::int16_t value) : value_(value) {}
  Variant(std::int32_t value) : value_(value) {}
  Variant(double value) : value_(value) {}
  template <std::same_as<bool> T>
  Variant(T value) : value_(value) {}
  Variant(mirelo::Date value) : value_(value) {}
  Variant(std::string value) : value_(std::move(value)) {}
  Variant(std::string_view value) : value_(std::string(value)) {}
  Variant(const char* value) : value_(std::string(value)) {}
  Variant(std::shared_ptr<Object> value) : value_(std::move(value)) {}
  template <std::derived_from<Object> T>
  Variant(std::shared_ptr<T> value) : value_(std::shared_ptr<Object>(std::move(value))) {}
  Variant(VariantArray value);

  // A text in place of a text takes over its memory. The new one may be a part of the old.
  template <std::same_as<std::string_view> T>
  Variant& operator=(T text) {
    if (auto* const old = std::get_if<std::string>(&value_)) {
      old->assign(text);
    } else if (type() < Type::String && text.size() <= std::string().capacity()) {
      value_.emplace<std::string>().assign(text);  // without the heap, so that it cannot fail
    } else {
      value_.emplace<std::string>(std::string(text));
    }
    return *this;
  }

  Type type() const { return static_cast<Type>(value_.index()); }
  bool IsEmpty() const { return type() == Type::Empty; }
  bool IsArray() const { return type() == Type::Array; }
  bool IsObject() const { return type() == Type::Object; }
  bool IsText() const { return type() == Type::String; }
  // "Empty", "Integer", "Long", "Double", "Boolean", "Date", "String", "Variant()"; an object's own class
  // name, "Nothing" for an object reference that refers to none.
  std::string_view TypeName() const;

  // Numbers round half to even. Empty is 0. Text must be a number (ParseNumber); true is -1.
  std::int16_t ToInt16() const;
  std::int32_t ToInt32() const;
  double ToDouble() const;
  // Numbers are true unless 0; text must be "True", "False" (any case) or a number.
  bool ToBoolean() const;
  // Numbers as NumberText, with the regional decimal separator. Empty is "", a boolean "True" or "False", a
  // date its general form.
  std::string ToText(const RegionalFormat& regional = RegionalFormat::Standard()) const;
  // Text must be a date (ParseDate) or a number. Error 6 outside the years 100 to 9999.
  mirelo::Date ToDate(const RegionalFormat& regional = RegionalFormat::Standard()) const;

  // The text when this holds one, else null. No conversion, no copy.
  const std::string* IfText() const { return std::get_if<std::string>(&value_); }

  // The object; may be null. Error 424 when this holds none.
  const std::shared_ptr<mirelo::Object>& AsObject() const;
  // The array. Error 13 when this holds none. The second form makes it this variant's own first.
  const VariantArray& AsArray() const;
  VariantArray& AsArray();

  // Whether the value is the number `number`: empty counts as 0, text as the number it reads as (error 13 if
  // none).
  bool EqualsNumber(double number) const { return ToDouble() == number; }

  // Automation's equality: two texts exactly, otherwise as numbers when both convert; text that is no number
  // and a number are unequal. Error 13 for arrays and objects.
  friend bool operator==(const Variant& a, const Variant& b);

 private:
  std::variant<std::monostate, std::int16_t, std::int32_t, double, bool, mirelo::Date, std::string,
               std::shared_ptr<mirelo::Object>, std::shared_ptr<VariantArray>>
      value_;
};

// An array of variants with one or two dimensions and a lower bound for each. A bad index is error 9.
class VariantArray {
 public:
  // No elements: bounds 0 to -1, as splitting an empty text gives.
  VariantArray() = default;
  // Error 9 when an upper bound lies below its lower one.
  VariantArray(std::int32_t lower, std::int32_t upper);
  VariantArray(std::int32_t lower1, std::int32_t upper1, std::int32_t lower2, std::int32_t upper2);
  // Bounds 0 to n - 1, each element a text.
  static VariantArray OfTexts(const std::vector<std::string>& texts);

  int Dimensions() const { return dimensions_; }
  // `dimension` is 1 or 2; error 9 for one that the array does not have.
  std::int32_t LBound(int dimension = 1) const;
  std::int32_t UBound(int dimension = 1) const;

  // An index count that differs from the dimensions is error 9.
  Variant& operator()(std::int32_t index) { return items_[Offset(index)]; }
  const Variant& operator()(std::int32_t index) const { return items_[Offset(index)]; }
  Variant& operator()(std::int32_t row, std::int32_t column) { return items_[Offset(row, column)]; }
  const Variant& operator()(std::int32_t row, std::int32_t column) const {
    return items_[Offset(row, column)];
  }

  // One dimension only: a new upper bound, contents kept as far as they fit.
  void ReDimPreserve(std::int32_t upper);

 private:
  struct Bounds {
    std::int32_t lower = 0;
    std::int32_t upper = -1;

    std::size_t Count() const { return static_cast<std::size_t>(std::int64_t{upper} - lower + 1); }
    std::size_t Offset(std::int32_t index) const {
      if (index < lower || index > upper) RaiseBadIndex();
      return static_cast<std::size_t>(std::int64_t{index} - lower);
    }
  };

  [[noreturn]] static void RaiseBadIndex();
  std::size_t Offset(std::int32_t index) const {
    if (dimensions_ != 1) RaiseBadIndex();
    return bounds_[0].Offset(index);
  }
  std::size_t Offset(std::int32_t row, std::int32_t column) const {
    if (dimensions_ != 2) RaiseBadIndex();
    return bounds_[0].Offset(row) * bounds_[1].Count() + bounds_[1].Offset(column);
  }

  int dimensions_ = 1;
  Bounds bounds_[2];
  std::vector<Variant> items_;  // row after row
};

}  // namespace mirelo
