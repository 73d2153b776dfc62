#pragma once

#include "com/system.h"

#include <span>
#include <string_view>

namespace mirelo::com {

// What a class that clients can make goes by on their machines. These are for good: programs remember them.
struct ClassId {
  std::string_view name;
  CLSID id;
};
std::span<const ClassId> ClassIds();

// The interface of a class's events; IID_NULL where it has none.
const IID& EventsOf(std::string_view class_name);

}  // namespace mirelo::com
