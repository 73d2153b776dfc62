#pragma once

#include <filesystem>

#include "adapters/workbook/spreadsheet.h"

namespace mirelo::app {

// The workbook of an .xlsx file, or a new one when there is no such file. What of the file a saved workbook
// would not hold any more is told on the standard error stream.
workbook::Spreadsheet OpenOrNew(const std::filesystem::path& file);

}  // namespace mirelo::app
