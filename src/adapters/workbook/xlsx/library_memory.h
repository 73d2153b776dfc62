#pragma once

#include <zip.h>

#include <pugixml.hpp>

namespace mirelo::workbook {

// Libraries tell of exhausted memory among the faults that they find in a file, but it is none of the file's,
// which must not be called damaged for it. These raise error 7 where a library failed for want of memory.
void RequireMemory(const zip_error_t& error);
void RequireMemory(const pugi::xml_parse_result& result);

}  // namespace mirelo::workbook
