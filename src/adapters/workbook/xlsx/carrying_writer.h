#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "adapters/workbook/xlsx/origin.h"
#include "adapters/workbook/xlsx/stale_results.h"

namespace mirelo::workbook {

// The sheets of a workbook that are written anew, in its order, and a file of them alone.
struct NewSheets {
  std::vector<std::shared_ptr<Sheet>> sheets;
  std::vector<char> file;  // empty when there are none
};

// Has the file writer write all sheets of the book but the kept ones. It needs a path to write to: `file`,
// whose content is of no use afterwards. Errors as WriteWorkbook.
NewSheets WriteNewSheets(const Book& book, const Origin::Kept& kept, const std::filesystem::path& file);

// Writes a workbook over `file`, which is there: the parts of its origin, in which the sheets of `fresh` take
// the place of those that were changed. Kept sheets stay byte for byte, except that only the sheet in front
// has its tab selected, and that stale results of formulas are left out. Error 1004 when the origin is
// damaged, or the file of the new sheets is; 61 and 75 as WriteWorkbook.
void WriteCarrying(const Book& book, const Origin& origin, const Origin::Kept& kept,
                   const StaleResults& stale, const NewSheets& fresh, const std::filesystem::path& file);

}  // namespace mirelo::workbook
