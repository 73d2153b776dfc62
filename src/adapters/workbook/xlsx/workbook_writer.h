#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "adapters/workbook/model/book.h"

namespace mirelo::workbook {

// Writes a whole .xlsx file over `file`; helper files without a name come and go in the same folder. Error
// 1004 when the workbook is more than a file can hold, or the writer fails. A disk that is full goes
// unnoticed in part of the work: read the file back before it is trusted.
void WriteWorkbook(const Book& book, const std::filesystem::path& file);

// The same with these worksheets of the book alone.
void WriteSheets(const Book& book, const std::vector<std::shared_ptr<Sheet>>& sheets,
                 const std::filesystem::path& file);

}  // namespace mirelo::workbook
