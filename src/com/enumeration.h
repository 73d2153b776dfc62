#pragma once

#include "com/system.h"

#include <memory>

#include "automation_server/enumeration.h"
#include "com/held.h"

namespace mirelo::com {

// A walk of a client's For Each.
Held<IEnumVARIANT> WalkOf(std::shared_ptr<automation_server::Enumeration> items);

}  // namespace mirelo::com
