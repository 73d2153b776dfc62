#pragma once

#include <string>

namespace mirelo::testing {

// The classes that clients can make, as the interface definition language tells them: what Windows' type
// library is compiled of. A line a member, under the numbers by which the door of Windows knows it.
std::string InterfaceText();

}  // namespace mirelo::testing
