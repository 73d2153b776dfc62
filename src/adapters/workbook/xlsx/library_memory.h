#pragma once

#include <zip.h>

#include <pugixml.hpp>

namespace mirelo::workbook {

// Libraries report exhausted memory in the same way as faults of a file, but the file is not to be called
// damaged for it. These raise error 7 where a library failed for want of memory, and do nothing otherwise.
void RequireMemory(const zip_error_t& error);
void RequireMemory(const pugi::xml_parse_result& result);

}  // namespace mirelo::workbook
