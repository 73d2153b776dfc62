#include "adapters/workbook/sheet_name.h"

#include <memory>

#include "adapters/workbook/rules.h"
#include "spreadsheet/sheet_name.h"

namespace mirelo::workbook {

namespace {

std::string_view Objection(const Book& book, const void* sheet, std::string_view name) {
  return spreadsheet::NameObjection(name, [&](std::string_view wanted) {
    const std::shared_ptr<const void> worksheet = book.FindSheet(wanted);
    const std::shared_ptr<const void> chart_sheet = book.FindChartSheet(wanted);
    return (worksheet != nullptr && worksheet.get() != sheet) ||
           (chart_sheet != nullptr && chart_sheet.get() != sheet);
  });
}

}  // namespace

std::string_view NameObjection(const Book& book, const Sheet& sheet, std::string_view name) {
  return Objection(book, &sheet, name);
}

std::string_view NameObjection(const Book& book, const Chart& sheet, std::string_view name) {
  return Objection(book, &sheet, name);
}

}  // namespace mirelo::workbook
