#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/model/sheet.h"
#include "adapters/workbook/model/style_table.h"
#include "automation/regional_format.h"

namespace mirelo::workbook {

// What the file says about the document as a whole; empty where it says nothing.
struct DocumentProperties {
  std::string title;
  std::string subject;
  std::string author;
  std::string keywords;
  std::string comments;
  std::string category;
  std::string status;
  std::string manager;
  std::string company;
};

// One workbook. It has at least one sheet.
struct Book {
  std::string name = "Book1";
  std::vector<std::shared_ptr<Sheet>> sheets;
  std::size_t active = 0;
  StyleTable styles;
  DocumentProperties properties;
  RegionalFormat regional = RegionalFormat::Standard();  // for typed text

  // A workbook with one empty sheet, "Sheet1".
  static std::shared_ptr<Book> New();

  // Null when no sheet bears the name; without regard to case.
  std::shared_ptr<Sheet> FindSheet(std::string_view sheet_name) const;
  std::size_t IndexOf(const Sheet& sheet) const;
  // A new sheet in front of the active one, made active.
  std::shared_ptr<Sheet> AddSheet();
};

}  // namespace mirelo::workbook
