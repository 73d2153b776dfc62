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

// One workbook. It has at least one worksheet.
struct Book {
  std::string name = "Book1";
  std::vector<std::shared_ptr<Sheet>> sheets;
  std::size_t active = 0;  // the worksheet in front, also behind a chart sheet
  std::vector<std::shared_ptr<Chart>> chart_sheets;
  std::shared_ptr<Chart> front_chart;  // the chart sheet in front; null when a worksheet is
  StyleTable styles;
  DocumentProperties properties;
  RegionalFormat regional = RegionalFormat::Standard();  // for typed text

  // A workbook with one empty sheet, "Sheet1".
  static std::shared_ptr<Book> New();

  // Null when no worksheet (chart sheet) bears the name; without regard to case.
  std::shared_ptr<Sheet> FindSheet(std::string_view sheet_name) const;
  std::shared_ptr<Chart> FindChartSheet(std::string_view sheet_name) const;
  std::size_t IndexOf(const Sheet& sheet) const;
  // A new worksheet in front of the active one, brought to the front.
  std::shared_ptr<Sheet> AddSheet();
  // A new chart sheet behind the others, brought to the front.
  std::shared_ptr<Chart> AddChartSheet();

  // Null while a chart sheet is in front.
  std::shared_ptr<Sheet> FrontSheet() const { return front_chart ? nullptr : sheets[active]; }
  void BringToFront(const Sheet& sheet);

  // Takes the area's cells out of the sheet; those below move up, and all charts that plot them follow.
  void DeleteCells(const std::shared_ptr<Sheet>& sheet, const Area& area);
};

}  // namespace mirelo::workbook
