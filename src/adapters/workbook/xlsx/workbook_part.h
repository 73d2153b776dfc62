#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/xlsx/workbook_reader.h"

namespace mirelo::workbook {

// The relationships of the sheets that a workbook part lists, by their places in the list.
std::vector<std::string> SheetLinks(const std::string& part, std::string_view text);

// The text of a workbook part with the sheets of a book, in their order, that was loaded from it. `old` are
// the sheets that the part lists, `links` has the relationships of those that are new or written anew. What
// is no worksheet stays behind the sheet that it stood behind. The program that opens the file is told to
// compute its formulas anew.
std::string RewriteWorkbookPart(const std::string& part, std::string_view text, const Book& book,
                                const std::vector<LoadedBook::Entry>& old,
                                const std::map<const Sheet*, std::string>& links);

}  // namespace mirelo::workbook
