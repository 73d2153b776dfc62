#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace mirelo::workbook {

// Gives parts of an .xlsx file other texts. All other parts keep their bytes, and the file its identity:
// whoever holds it open goes on holding it. 1004 when the file has no such part; 61 and 75 for failures of
// the file system, after which the file is of no use.
void ReplaceParts(const std::filesystem::path& file, const std::map<std::string, std::string>& texts);

}  // namespace mirelo::workbook
