#pragma once

#include <filesystem>

namespace mirelo::app {

class Screen;
class Session;

// Shows the settings dialog on the session's screen, for the workbook of this file, which Go saves. Prints
// how it was ended, tells what fails on the standard error stream, and answers the exit code.
int ShowDialog(Session& session, Screen& screen, const std::filesystem::path& workbook);

// Has the settings dialog say above its tabs in which file Go saves.
void SayWhereItSaves(Screen& screen, const std::filesystem::path& workbook);

}  // namespace mirelo::app
