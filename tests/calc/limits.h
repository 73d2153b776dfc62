#pragma once

#include <span>

#include "excel/conformance.h"

namespace mirelo::testing {

// The tests of tests/excel that a document in LibreOffice cannot pass.
std::span<const Limit> CalcLimits();

}  // namespace mirelo::testing
