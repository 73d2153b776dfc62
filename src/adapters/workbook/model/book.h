#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "adapters/workbook/model/sheet.h"
#include "adapters/workbook/model/style_table.h"
#include "automation/regional_format.h"
#include "automation/text.h"

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
  std::vector<std::shared_ptr<Sheet>> sheets;  // changed, and renamed, by the members below only
  std::size_t active = 0;                      // the worksheet in front, also behind a chart sheet
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
  // Puts in a worksheet at this index. No other sheet may bear its name.
  void InsertSheet(std::size_t index, std::shared_ptr<Sheet> sheet);
  // Gives a worksheet of the book a name that no other one bears.
  void RenameSheet(Sheet& sheet, std::string_view new_name);
  // A new chart sheet behind the others, brought to the front.
  std::shared_ptr<Chart> AddChartSheet();

  // Null while a chart sheet is in front.
  std::shared_ptr<Sheet> FrontSheet() const { return front_chart ? nullptr : sheets[active]; }
  void BringToFront(const Sheet& sheet);

  // Takes the area's cells out of the sheet; those below move up, and all charts that plot them follow.
  void DeleteCells(const std::shared_ptr<Sheet>& sheet, const Area& area);

 private:
  struct NameHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return HashText(text); }
  };
  struct SameName {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const { return EqualText(a, b); }
  };
  std::unordered_map<std::string, std::shared_ptr<Sheet>, NameHash, SameName> by_name_;
};

}  // namespace mirelo::workbook
