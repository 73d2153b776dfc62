#pragma once

#include <concepts>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "adapters/excel/foreign_object.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"

namespace mirelo::host::excel {
class Application;
class Axis;
class Border;
class Characters;
class Chart;
class ChartArea;
class ChartColorFormat;
class ChartFillFormat;
class ChartObject;
class ChartTitle;
class Charts;
class Comment;
class DisplayFormat;
class Font;
class FormatCondition;
class FormatConditions;
class Gridlines;
class Interior;
class PlotArea;
class Point;
class Range;
class Selectable;
class Series;
class Shape;
class Shapes;
class Sheet;
class TickLabels;
class Window;
class Workbook;
class Worksheet;
class Worksheets;
}  // namespace mirelo::host::excel

namespace mirelo::excel {

// What a call of the program has answered, as an object of the port: of the class `T`, or of one derived from
// it, whose members call the program's object. Null where the answer is that there is none. Error 13 for an
// answer that is no object of the program. Each is defined beside the class that it makes.
template <class T>
std::shared_ptr<T> As(const Variant& result) = delete;
template <>
std::shared_ptr<host::excel::Application> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Axis> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Border> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Characters> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Chart> As(const Variant& result);
template <>
std::shared_ptr<host::excel::ChartArea> As(const Variant& result);
template <>
std::shared_ptr<host::excel::ChartColorFormat> As(const Variant& result);
template <>
std::shared_ptr<host::excel::ChartFillFormat> As(const Variant& result);
template <>
std::shared_ptr<host::excel::ChartObject> As(const Variant& result);
template <>
std::shared_ptr<host::excel::ChartTitle> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Charts> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Comment> As(const Variant& result);
template <>
std::shared_ptr<host::excel::DisplayFormat> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Font> As(const Variant& result);
template <>
std::shared_ptr<host::excel::FormatCondition> As(const Variant& result);
template <>
std::shared_ptr<host::excel::FormatConditions> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Gridlines> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Interior> As(const Variant& result);
template <>
std::shared_ptr<host::excel::PlotArea> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Point> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Range> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Selectable> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Series> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Shape> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Shapes> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Sheet> As(const Variant& result);
template <>
std::shared_ptr<host::excel::TickLabels> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Window> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Workbook> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Worksheet> As(const Variant& result);
template <>
std::shared_ptr<host::excel::Worksheets> As(const Variant& result);

// What a member of the program gave, as the port's member returns it.
class Result {
 public:
  explicit Result(Variant value) : value_(std::move(value)) {}

  operator Variant() const { return value_; }
  operator std::string() const { return value_.ToText(); }
  operator std::int32_t() const { return value_.ToInt32(); }
  operator double() const { return value_.ToDouble(); }
  operator bool() const { return value_.ToBoolean(); }
  template <class T>
  requires std::is_enum_v<T>
  operator T() const { return static_cast<T>(value_.ToInt32()); }
  template <class T>
  operator std::shared_ptr<T>() const {
    return As<T>(value_);
  }

 private:
  Variant value_;
};

// What the objects of this adapter have in common: the foreign object that each of them calls.
class Late {
 public:
  explicit Late(std::shared_ptr<ForeignObject> foreign) : foreign_(std::move(foreign)) {}
  virtual ~Late() = default;

  const std::shared_ptr<ForeignObject>& foreign() const { return foreign_; }

 protected:
  template <class... A>
  Result Get(std::string_view member, const A&... arguments) const {
    return Result(foreign_->Get(member, {Outgoing(arguments)...}));
  }
  template <class V, class... A>
  void Let(std::string_view member, const V& value, const A&... arguments) const {
    foreign_->Let(member, Outgoing(value), {Outgoing(arguments)...});
  }

 private:
  template <class T>
  static Variant Outgoing(const T& value) {
    if constexpr (std::is_enum_v<T>) {
      return static_cast<std::int32_t>(value);
    } else if constexpr (std::derived_from<T, Object>) {
      return ForeignOf(value);
    } else if constexpr (std::same_as<T, Variant>) {
      return value.IsObject() && value.AsObject() != nullptr ? ForeignOf(*value.AsObject()) : value;
    } else {
      return value;
    }
  }
  // Error 13 for an object that is not the program's.
  static Variant ForeignOf(const Object& object) {
    const auto* const late = dynamic_cast<const Late*>(&object);
    if (late == nullptr) throw Errors::TypeMismatch();
    return late->foreign();
  }

  std::shared_ptr<ForeignObject> foreign_;
};

// One that stands behind the class `Port` of the port.
template <class Port>
class LateOf : public Port, public Late {
 public:
  using Late::Late;
};

// An object of class T for a result.
template <class T>
std::shared_ptr<T> LateObject(const Variant& result) {
  if (result.IsEmpty() || result.AsObject() == nullptr) return nullptr;
  auto foreign = std::dynamic_pointer_cast<ForeignObject>(result.AsObject());
  if (foreign == nullptr) throw Errors::TypeMismatch();
  return std::make_shared<T>(std::move(foreign));
}

}  // namespace mirelo::excel
