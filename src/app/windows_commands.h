#pragma once

#include <memory>

#include "app/dialog_command.h"
#include "app/open_command.h"
#include "app/options.h"
#include "app/run_command.h"

namespace CLI {
class App;
}

namespace mirelo::app {

// The command line of mirelo-windows: the commands of mirelo that show windows.
struct WindowsCommands {
  WindowsCommands();
  ~WindowsCommands();

  GlobalOptions global;
  std::unique_ptr<CLI::App> program;
  DialogCommand dialog;
  OpenCommand open;
  RunCommand run;
};

}  // namespace mirelo::app
