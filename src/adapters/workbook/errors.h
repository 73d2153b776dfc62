#pragma once

#include <string>
#include <utility>

#include "automation/runtime_error.h"
#include "host/excel/constants.h"

namespace mirelo::workbook {

// What the spreadsheet refuses to do, with a sentence for people.
RuntimeError Refused(std::string why);

// What the file system refuses, by its errno: number 61 (disk full) where there is no room, else 75.
RuntimeError FileError(const std::string& doing, int reason);

// Number 70: somebody else has the file.
RuntimeError PermissionDenied(std::string why);

// Number 61.
RuntimeError DiskFull(std::string why);

}  // namespace mirelo::workbook
