#pragma once

#include <memory>

#include "app/dialog/screen.h"

namespace mirelo {
class LinuxHost;
}

namespace mirelo::app {

// Shows windows in place of the terminal. A qt::Application must exist and outlive the host, the host the
// screen. To be called before a port is asked for.
std::unique_ptr<Screen> ShowWindows(LinuxHost& host);

// A screen by itself. A qt::Application must exist and outlive it.
std::unique_ptr<Screen> ShowAlone();

}  // namespace mirelo::app
