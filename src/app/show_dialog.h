#pragma once

#include <filesystem>
#include <optional>

namespace mirelo::app {

class Session;

// Shows the settings dialog on the session's desktop, for the workbook of this file, which Go saves; without
// a file for a workbook that is not kept. Prints how it was ended, and answers the exit code.
int ShowDialog(Session& session, const std::optional<std::filesystem::path>& workbook);

}  // namespace mirelo::app
