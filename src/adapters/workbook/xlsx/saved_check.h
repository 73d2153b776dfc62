#pragma once

#include <filesystem>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "adapters/workbook/model/book.h"
#include "adapters/workbook/xlsx/stale_results.h"

namespace mirelo::workbook {

// Reads a file that was just written and compares all values, comments, conditions and charts with the
// workbook's. The writer does not see when its helper files find no room; this does. Error 61 when something
// is missing.
void CheckSaved(const Book& book, const std::filesystem::path& file);

// The same for the bytes of a file of these sheets alone.
void CheckSaved(const std::vector<std::shared_ptr<Sheet>>& sheets, std::span<const char> file);

// The same check where these sheets were kept as they stood in the file that the workbook was loaded from,
// but for the stale results of formulas. It raises nothing for what is missing: the result says in a few
// words what is wrong, and is empty when nothing is.
std::string ProblemOfSaved(const Book& book, const std::set<const Sheet*>& kept, const StaleResults& stale,
                           const std::filesystem::path& file);

}  // namespace mirelo::workbook
