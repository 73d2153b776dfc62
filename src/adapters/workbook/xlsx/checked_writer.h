#pragma once

#include <filesystem>
#include <string>

#include "adapters/workbook/xlsx/origin.h"

namespace mirelo::workbook {

// Writes a workbook over `file`, which is there, and reads it back. Errors as WriteWorkbook, and 61 when what
// was written does not read back: the disk is full.
void WriteChecked(const Book& book, const std::filesystem::path& file);

// The same with sheets kept as they stand in the workbook's origin. The result is what is wrong with these,
// in a few words, where that comes to light only now: the file is of no use then, and would be of none the
// next time. Empty when the file is good.
[[nodiscard]] std::string WriteCheckedCarrying(const Book& book, const Origin& origin,
                                               const Origin::Kept& kept, const std::filesystem::path& file);

}  // namespace mirelo::workbook
