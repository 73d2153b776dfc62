#pragma once

#include <string>

#include "automation/variant.h"
#include "automation_server/member.h"
#include "automation_server/rows.h"

namespace mirelo::automation_server::excel {

// The item of a collection by its number or its name, as a method.
template <class Items>
Member ItemRow() {
  return MethodRow(
      "Item",
      +[](Items& items, const Variant& index) {
        if (const std::string* name = index.IfText()) return items.Item(*name);
        return items.Item(index.ToInt32());
      },
      "Index");
}

}  // namespace mirelo::automation_server::excel
