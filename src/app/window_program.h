#pragma once

#include <string>
#include <vector>

namespace mirelo::app {

// What to do where no window can be shown, for error texts.
inline constexpr char kWithoutWindows[] =
    "Without a screen, \"mirelo settings\" shows and changes the settings, and \"mirelo go\" checks and "
    "commits them as the dialog does.\n";

// Becomes the program mirelo-windows that stands beside this one, with this command line. Returns only when
// it cannot be started: it has said why and what to install by then, and the result is the exit code.
int BecomeWindowProgram(const std::vector<std::string>& words);

}  // namespace mirelo::app
