#pragma once

#include <filesystem>

#include "adapters/workbook/xlsx/origin.h"

namespace mirelo::workbook {

// Writes a workbook over `file`, which is there: the parts of its origin with these sheets as they stand, and
// the other sheets written anew. Of a kept sheet only the mark is taken away that its tab is selected, unless
// it is in front. Errors as WriteWorkbook.
void WriteCarrying(const Book& book, const Origin& origin, const Origin::Kept& kept,
                   const std::filesystem::path& file);

}  // namespace mirelo::workbook
