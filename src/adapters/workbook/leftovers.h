#pragma once

#include <filesystem>

namespace mirelo::workbook {

// Removes what processes that were killed have left beside their workbooks in the folder of this one: locks
// that nobody has any more, and what was being made under them. This process must have the lock of `target`.
void RemoveLeftovers(const std::filesystem::path& target);

}  // namespace mirelo::workbook
