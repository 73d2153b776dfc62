#pragma once

#include <filesystem>

namespace mirelo::app {

// Where the program keeps what it should remember from one run to the next and nobody would miss: a folder of
// its own below $XDG_STATE_HOME, or below ~/.local/state. It need not be there yet. Empty where neither that
// variable nor HOME names a folder.
std::filesystem::path StateFolder();

}  // namespace mirelo::app
