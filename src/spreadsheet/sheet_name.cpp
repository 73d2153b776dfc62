#include "spreadsheet/sheet_name.h"

#include "automation/text.h"
#include "host/excel/sheet_names.h"
#include "spreadsheet/text_units.h"

namespace mirelo::spreadsheet {

namespace {

constexpr std::string_view kReserved = "History";  // the program's own sheet of tracked changes

}  // namespace

std::string_view NameObjection(std::string_view name,
                               const std::function<bool(std::string_view name)>& is_taken) {
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
  if (is_taken(name)) return "Another sheet bears this name already.";
  return "";
}

}  // namespace mirelo::spreadsheet
