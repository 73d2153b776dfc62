#pragma once

namespace mirelo::app {

// How to go on where no window can be shown.
inline constexpr const char* kWithoutWindows =
    "Without a screen, \"mirelo settings\" shows and changes the settings, and \"mirelo go\" checks and "
    "commits them as the dialog does.\n";

}  // namespace mirelo::app
