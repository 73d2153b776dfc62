#pragma once

#include <filesystem>
#include <string_view>

#include "workbook/workbook_files.h"

namespace mirelo::testing {

// Files with sheets of a person's own, to which a table is added.
class KeptSheets : public WorkbookFiles {
 protected:
  static constexpr const char* kTable = "Dovanta2_Quotes";

  workbook::Spreadsheet OpenPersons();
  static SheetPtr AddTable(const workbook::Spreadsheet& spreadsheet);
  static void ExpectTable(host::excel::Worksheet& sheet);
  static SheetPtr SheetNamed(const workbook::Spreadsheet& spreadsheet, std::string_view name) {
    return BookOf(spreadsheet)->Worksheets()->Item(name);
  }
  static Parts PartsOf(const std::filesystem::path& file) { return Unzip(BytesOf(file)); }
};

}  // namespace mirelo::testing
