#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "automation/variant.h"
#include "automation_server/class.h"

namespace mirelo::automation_server {

// All that automation clients can call, class by class, whatever carries the calls.
std::span<const Class> Classes();

// Adds a class that only one kind of client has. To be called before anybody asks for a class.
void AddClass(Class added);

// The class of that name, in letters of either case; null when there is none.
const Class* ClassNamed(std::string_view name);

// What clients can call of an object. One that has no table is an object of no members, which clients can
// only pass on.
const Class& ClassOf(const Object& object);

// A new object of a class that clients can make by name. Error 429 for any other name.
std::shared_ptr<Object> CreateObject(std::string_view class_name);

}  // namespace mirelo::automation_server
