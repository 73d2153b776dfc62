#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <typeinfo>
#include <vector>

#include "automation/variant.h"

namespace mirelo::automation_server {

// What a member declares of its value, a parameter or a result. A kVariant may hold anything.
enum class ValueType {
  kNothing,
  kVariant,
  kInteger,
  kLong,
  kSingle,
  kDouble,
  kBoolean,
  kText,
  kObject,
  kArray
};

struct Parameter {
  std::string_view name;
  ValueType type = ValueType::kVariant;
  // The class of a kObject, the enumeration of a kLong; null where it is any.
  const std::type_info* of = nullptr;
  // Whether the caller gets back what the member leaves in it.
  bool by_reference = false;
  // What stands in where the caller left the argument out; without one it may not be left out.
  std::optional<Variant> default_value = std::nullopt;
};

using ObjectPtr = std::shared_ptr<Object>;

// One name that clients can use of an object. Rows of these make a class's table (rows.h).
//
// The functions take an object (not null) of the class that the table belongs to, and as many arguments as
// there are parameters. They raise what the class raises, and error 13 or 6 for a value that has no
// conversion.
struct Member {
  enum class Kind {
    kProperty,
    kMethod,
    kEnumeration,  // a method whose result is an Enumeration, for clients' For Each
  };
  // Of a property: its get. Otherwise the call.
  using Get = std::function<Variant(const ObjectPtr&, std::span<Variant> arguments)>;
  using Put = std::function<void(const ObjectPtr&, std::span<Variant> arguments, const Variant& value)>;

  std::string_view name;
  Kind kind = Kind::kProperty;
  ValueType type = ValueType::kNothing;  // of the property, or of the method's result
  const std::type_info* of = nullptr;    // as that of a parameter
  std::vector<Parameter> parameters = {};
  Get get = nullptr;  // null for a property that can only be set
  Put let = nullptr;  // of a property whose value clients assign
  Put set = nullptr;  // of a property whose reference clients set
  // Whether the object's own name stands for this member.
  bool is_default = false;
};

// What an object tells of its own accord.
struct EventMember {
  using Cookie = std::uint32_t;
  using Handler = std::function<void(std::span<const Variant> arguments)>;

  std::string_view name;
  std::vector<Parameter> parameters;
  std::function<Cookie(Object&, Handler)> subscribe;
  std::function<void(Object&, Cookie)> unsubscribe;
};

}  // namespace mirelo::automation_server
