#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/xlsx/workbook_reader.h"

namespace mirelo::workbook {

// The ids of the relationships to the sheets that a workbook part lists, in the order of the list.
std::vector<std::string> SheetRelationshipIds(const std::string& part, std::string_view text);

// `text` is a workbook part that `book` was loaded from, and `old` are the sheets that it lists. The result
// is that part with the sheets of the book, in their order. Sheets that are new or written anew have their
// ids of relationships in `relationship_ids`, the others keep theirs. What is no worksheet stays behind the
// sheet that it stood behind. The program that opens the file is told to compute its formulas anew.
std::string RewriteWorkbookPart(const std::string& part, std::string_view text, const Book& book,
                                const std::vector<LoadedBook::Entry>& old,
                                const std::map<const Sheet*, std::string>& relationship_ids);

}  // namespace mirelo::workbook
