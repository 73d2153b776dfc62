#include "adapters/workbook/xlsx/library_memory.h"

#include "automation/runtime_error.h"

namespace mirelo::workbook {

void RequireMemory(const zip_error_t& error) {
  if (error.zip_err == ZIP_ER_MEMORY) throw Errors::OutOfMemory();
}

void RequireMemory(const pugi::xml_parse_result& result) {
  if (result.status == pugi::status_out_of_memory) throw Errors::OutOfMemory();
}

}  // namespace mirelo::workbook
