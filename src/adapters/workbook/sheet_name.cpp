#include "adapters/workbook/sheet_name.h"

#include <cstddef>
#include <memory>

#include "adapters/workbook/text_units.h"
#include "automation/text.h"
#include "host/excel/sheet_names.h"

namespace mirelo::workbook {

namespace {

constexpr std::string_view kReserved = "History";  // the program's own sheet of tracked changes

std::string_view Objection(const Book& book, const void* sheet, std::string_view name) {
  if (name.empty()) return "A sheet's name cannot be empty.";
  if (Utf16Length(name) > host::excel::kLongestSheetName)
    return "A sheet's name cannot be longer than 31 characters.";
  if (name.find_first_of(host::excel::kInNoSheetName) != std::string_view::npos) {
    return "A sheet's name cannot contain any of : \\ / ? * [ ].";
  }
  if (name.front() == '\'' || name.back() == '\'')
    return "A sheet's name cannot begin or end with an apostrophe.";
  if (CleanText(name) != name) return "A sheet's name must be well-formed text.";
  if (EqualText(name, kReserved)) return "\"History\" is a reserved name.";
  for (const std::shared_ptr<const void>& holder : {std::shared_ptr<const void>(book.FindSheet(name)),
                                                    std::shared_ptr<const void>(book.FindChartSheet(name))}) {
    if (holder != nullptr && holder.get() != sheet) return "Another sheet bears this name already.";
  }
  return "";
}

}  // namespace

std::string_view NameObjection(const Book& book, const Sheet& sheet, std::string_view name) {
  return Objection(book, &sheet, name);
}

std::string_view NameObjection(const Book& book, const Chart& sheet, std::string_view name) {
  return Objection(book, &sheet, name);
}

}  // namespace mirelo::workbook
