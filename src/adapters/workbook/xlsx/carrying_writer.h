#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "adapters/workbook/xlsx/origin.h"

namespace mirelo::workbook {

// The sheets of a workbook that are written anew, in its order, and a file of them alone.
struct NewSheets {
  std::vector<std::shared_ptr<Sheet>> sheets;
  std::vector<char> file;  // empty when there are none
};

// All but the kept ones. `file` is where they are written meanwhile. Errors as WriteWorkbook.
NewSheets WriteNewSheets(const Book& book, const Origin::Kept& kept, const std::filesystem::path& file);

// Writes a workbook over `file`, which is there: the parts of its origin with the kept sheets as they stand,
// and the new ones. Of a kept sheet only the mark is taken away that its tab is selected, unless it is in
// front. Error 1004 when the origin is damaged, or the file of the new sheets is; 61 and 75 as WriteWorkbook.
void WriteCarrying(const Book& book, const Origin& origin, const Origin::Kept& kept, const NewSheets& fresh,
                   const std::filesystem::path& file);

}  // namespace mirelo::workbook
