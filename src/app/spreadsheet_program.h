#pragma once

#include <memory>

#include "host/documents.h"

namespace mirelo::app {

// The spreadsheet program that the commands work in: .xlsx files, loaded and saved by this program itself.
// All commands choose it here.
std::unique_ptr<host::Documents> SpreadsheetProgram();

}  // namespace mirelo::app
