#pragma once

namespace mirelo {
class LinuxHost;
}

namespace mirelo::app {

// Shows windows in place of the terminal. A qt::Application must exist and outlive the host. To be called
// before a port is asked for.
void ShowWindows(LinuxHost& host);

}  // namespace mirelo::app
