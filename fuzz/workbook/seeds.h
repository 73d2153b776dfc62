#pragma once

#include <vector>

#include "workbook/package_builder.h"

namespace mirelo::fuzzing {

// Whole workbooks to start from: what the system writes itself, and others that use what it only reads.
const std::vector<testing::Parts>& Seeds();

}  // namespace mirelo::fuzzing
