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
// Adds one that a library has beside those that all have, under a number of its own. Before any is asked for.
void AddClassId(std::string_view class_name, unsigned char number);
// GUID_NULL for one that clients cannot make.
const CLSID& ClassIdOf(std::string_view class_name);

// The interface of a class's members, which is a dispatch; GUID_NULL for one that clients cannot make.
const IID& InterfaceOf(std::string_view class_name);
// The interface of a class's events; GUID_NULL where it has none.
const IID& EventsOf(std::string_view class_name);

// An enumeration that members declare; GUID_NULL for one that none does.
const GUID& ConstantsOf(std::string_view enumeration);

// The type library that tells of all these.
const GUID& TypeLibraryId();

}  // namespace mirelo::com
