#pragma once

#include <string>

#include "automation/variant.h"

namespace mirelo {

namespace host::excel {
class Range;
}

// A value of the spreadsheet as a person of this machine's region reads it. Error 13 for several cells.
std::string TextOf(const Variant& value);
std::string TextOf(host::excel::Range& cell);

}  // namespace mirelo
