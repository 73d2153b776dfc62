#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "host/excel/application.h"

namespace mirelo::testing {

// An application that is called by the names of its members, as another program would be: through the table
// of what automation clients can call, and from there by the adapter that calls so. A test fails in which it
// answers otherwise than the list of a program's members says.
std::shared_ptr<host::excel::Application> CalledByNames(
    std::shared_ptr<host::excel::Application> application);

// The same, of a program that may refuse: `assigning` is called with the name of each property before it is
// assigned, and what it raises is the program's answer.
std::shared_ptr<host::excel::Application> CalledByNames(std::shared_ptr<host::excel::Application> application,
                                                        std::function<void(std::string_view)> assigning);

}  // namespace mirelo::testing
