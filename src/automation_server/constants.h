#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <typeinfo>

namespace mirelo::automation_server {

// A number that clients write by its name.
struct Constant {
  std::string_view name;
  std::int32_t value;
};

// An enumeration that members of the public interface declare.
struct ConstantList {
  std::string_view name;
  const std::type_info& type;
  std::span<const Constant> constants;
};

// All of them, in an order that stays.
std::span<const ConstantList> ConstantLists();

}  // namespace mirelo::automation_server
