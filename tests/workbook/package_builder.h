#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo::testing {

// The parts of an .xlsx file by name, as text.
using Parts = std::map<std::string, std::string>;

// A small whole workbook of one sheet, "Prices", whose part holds `sheet_data` between the tags of its cells.
// It has four cell formats: 0 plain, 1 a date (14), 2 bold on yellow, 3 "0.00".
Parts SmallWorkbook(std::string_view sheet_data = "");

// The name of that sheet's part.
inline constexpr const char* kSheetPart = "xl/worksheets/sheet1.xml";

// Puts `what` behind the first `mark` of a part.
void InsertBehind(std::string& part, std::string_view mark, std::string_view what);
// Replaces the first `what` of a part.
void ReplaceIn(std::string& part, std::string_view what, std::string_view with);

// Gives a workbook as many cell formats as a file may have, so that there is no room for one more.
void FillFormats(Parts& parts);

// The parts as a zip archive.
std::vector<char> Zip(const Parts& parts);

// The parts of an archive. What is no archive, and what is larger than a test needs, gives none.
Parts Unzip(std::string_view bytes);

}  // namespace mirelo::testing
