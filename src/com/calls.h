#pragma once

#include "com/system.h"

#include <optional>
#include <span>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::com {

// The number of a client's member; nothing where it has none of that name.
std::optional<DISPID> MemberNamed(IDispatch& object, std::string_view name);

// Calls a client's method. What it raises is its error, with number, text and source.
void CallMethod(IDispatch& object, DISPID method, std::span<const Variant> arguments);

}  // namespace mirelo::com
