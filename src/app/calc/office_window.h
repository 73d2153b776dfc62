#pragma once

#include <filesystem>
#include <optional>

namespace mirelo::app {

struct OfficePlace;

// Opens the user's own LibreOffice Calc with this file, or with a new spreadsheet, and with the extension,
// installed or not. Returns when that office has ended, or at once where one runs already that has opened it.
// The result is the exit code.
int ShowOffice(const OfficePlace& office, const std::optional<std::filesystem::path>& file);

}  // namespace mirelo::app
