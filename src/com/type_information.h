#pragma once

#include "com/system.h"

#include <string_view>

#include "com/held.h"

namespace mirelo::com {

// Type information that tells the name of a class and no more, by which clients tell objects apart. Null
// where Windows makes none.
Held<ITypeInfo> NamedTypeInformation(std::string_view class_name);

}  // namespace mirelo::com
