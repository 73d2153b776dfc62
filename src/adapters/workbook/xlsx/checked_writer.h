#pragma once

#include <filesystem>
#include <string>

#include "adapters/workbook/xlsx/origin.h"

namespace mirelo::workbook {

// Writes a workbook over `file`, which is there, and reads it back. Errors as WriteWorkbook, and 61 when what
// was written does not read back: the disk is full.
void WriteChecked(const Book& book, const std::filesystem::path& file);

// As WriteChecked, with sheets kept as they stand in the workbook's origin. The result is empty when the file
// is good. Otherwise the kept sheets do not read back, and the result says in a few words why: `file` is then
// of no use, and trying again would give the same, so the caller writes all sheets anew.
[[nodiscard]] std::string WriteCheckedCarrying(const Book& book, const Origin& origin,
                                               const Origin::Kept& kept, const std::filesystem::path& file);

}  // namespace mirelo::workbook
