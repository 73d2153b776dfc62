#include "app/workbook_file.h"

#include <iostream>

namespace mirelo::app {

workbook::Spreadsheet OpenOrNew(const std::filesystem::path& file) {
  if (!std::filesystem::exists(file)) return workbook::Spreadsheet::New();
  auto spreadsheet = workbook::Spreadsheet::Open(file);
  for (const auto& loss : spreadsheet.Losses())
    std::cerr << "warning: " << file.string() << ": " << loss << '\n';
  return spreadsheet;
}

}  // namespace mirelo::app
