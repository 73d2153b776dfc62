#pragma once

#include <string>

#include "app/commands/dialog_command.h"
#include "app/commands/open_command.h"
#include "app/commands/run_command.h"
#include "app/options.h"
#include "command_line/command.h"

namespace mirelo::app {

// The command line of mirelo-windows: the commands of mirelo that show windows.
struct WindowsCommands {
  // Unless told otherwise it speaks as mirelo, which becomes it.
  explicit WindowsCommands(const std::string& name = "mirelo");

  GlobalOptions global;
  command_line::Program program;
  DialogCommand dialog{program, global};
  OpenCommand open{program, global};
  RunCommand run{program, global};
};

}  // namespace mirelo::app
