#pragma once

#include <memory>

#include "host/excel/application.h"

namespace mirelo::testing {

// An application that is called by the names of its members, as another program would be: through the table
// of what automation clients can call, and from there by the adapter that calls so.
std::shared_ptr<host::excel::Application> CalledByNames(
    std::shared_ptr<host::excel::Application> application);

}  // namespace mirelo::testing
