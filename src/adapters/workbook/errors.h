#pragma once

#include <string>
#include <utility>

#include "automation/runtime_error.h"
#include "host/excel/constants.h"

namespace mirelo::workbook {

// What the spreadsheet refuses to do, with a sentence for people.
inline RuntimeError Refused(std::string why) {
  return RuntimeError(host::excel::kApplicationError, std::move(why), "Workbook");
}

}  // namespace mirelo::workbook
