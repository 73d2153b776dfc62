#pragma once

#include <memory>

#include "adapters/excel/foreign_object.h"
#include "host/excel/application.h"

namespace mirelo::excel {

// The spreadsheet program behind the port, each member being a call by its name. Null for null.
std::shared_ptr<host::excel::Application> LateBoundApplication(
    const std::shared_ptr<ForeignObject>& application);

}  // namespace mirelo::excel
