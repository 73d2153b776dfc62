#pragma once

#include <memory>

#include "automation/runtime_error.h"
#include "host/excel/sheet.h"
#include "host/excel/worksheet.h"

namespace mirelo {

// A sheet as a sheet of cells; error 13 when it is none.
inline std::shared_ptr<host::excel::Worksheet> WorksheetOf(const std::shared_ptr<host::excel::Sheet>& sheet) {
  auto worksheet = std::dynamic_pointer_cast<host::excel::Worksheet>(sheet);
  if (!worksheet) throw Errors::TypeMismatch();
  return worksheet;
}

}  // namespace mirelo
