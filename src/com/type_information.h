#pragma once

#include "com/system.h"

#include <string>
#include <string_view>

#include "com/held.h"

namespace mirelo::com {

// The file whose type library tells of the classes: a library or program that has it among its resources, or
// one of the library alone. Where it has none, or none was told, classes have names and no more.
void UseTypeLibraryOf(std::wstring file);

// The library itself, null where there is none.
Held<ITypeLib> TypeLibrary();

// Type information of a class's members from the type library; without a library the class's name alone, by
// which clients tell objects apart. Null where Windows cannot make it.
Held<ITypeInfo> InterfaceInformation(std::string_view class_name);
// What they can know of the class: which interfaces it has. Null for one that the type library lacks.
Held<ITypeInfo> ClassInformation(std::string_view class_name);

}  // namespace mirelo::com
