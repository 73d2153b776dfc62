#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo {
namespace host::excel {
class Range;
class Workbook;
class Worksheet;
}  // namespace host::excel
}  // namespace mirelo

namespace mirelo::testing {

// All that a person sees of cells, as text by address: value and its type, number format, alignment, letters,
// fill, lines, conditional formats, and the comment with its size. Cells in which there is nothing to see
// have no entry.
using SheetLook = std::map<std::string, std::string>;

// Of the cells of a range. The addresses are counted from its first cell, so that looks of ranges at
// different places compare.
SheetLook LookOf(host::excel::Range& cells);

// Of all cells that are used, and of one row and one column beyond.
SheetLook LookOf(host::excel::Worksheet& sheet);

// Of all sheets, the addresses with the sheet's name and "!" in front; and their order.
SheetLook LookOf(host::excel::Workbook& book);

// What differs, one line each: "Sheet1!B3: this -> that".
std::vector<std::string> Differences(const SheetLook& before, const SheetLook& after);

}  // namespace mirelo::testing
