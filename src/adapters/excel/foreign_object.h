#pragma once

#include <string_view>
#include <vector>

#include "automation/variant.h"

namespace mirelo::excel {

// An object of another program that is called by the names of its members. The objects among its results are
// foreign ones again, null for none, and only such may be among the arguments. Errors are the program's own.
// TypeName is what the program calls the object's class.
class ForeignObject : public Object {
 public:
  // Reads a property or calls a method; few programs care which.
  virtual Variant Get(std::string_view member, std::vector<Variant> arguments) = 0;
  // Assigns a property.
  virtual void Let(std::string_view member, const Variant& value, std::vector<Variant> arguments) = 0;
};

}  // namespace mirelo::excel
