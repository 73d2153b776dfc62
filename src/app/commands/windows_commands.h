#pragma once

#include <memory>

#include "app/commands/dialog_command.h"
#include "app/commands/open_command.h"
#include "app/commands/run_command.h"
#include "app/options.h"

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
