#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "adapters/workbook/load_limits.h"
#include "adapters/workbook/model/book.h"

namespace mirelo::workbook {

struct LoadedBook {
  std::shared_ptr<Book> book;
  std::vector<std::string> losses;  // see Spreadsheet::Losses
};

// Reads a whole .xlsx file. Error 1004, with a text that begins with the part at fault, for what is damaged
// or beyond the limits.
LoadedBook ReadWorkbook(std::span<const char> file, const LoadLimits& limits);

}  // namespace mirelo::workbook
