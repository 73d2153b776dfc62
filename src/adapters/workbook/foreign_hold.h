#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace mirelo::workbook {

// Why a file should not be replaced now, as a sentence that says what to do: another program has it open, as
// the lock file of a spreadsheet program tells that lies beside it (or where it is not saved yet), or holds
// a lock on it.
std::optional<std::string> ForeignHold(const std::filesystem::path& file);

}  // namespace mirelo::workbook
