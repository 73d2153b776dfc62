#include "app/commands/windows_commands.h"

namespace mirelo::app {

namespace {

command_line::Program WithoutWindows(const std::string& name, GlobalOptions& global) {
  command_line::Program program(name, "The windows of Mirelo; see mirelo --help");
  program.RequireCommand();
  program.TakeOptionsAnywhere();
  program.AddOption("--registry", global.registry, "As of mirelo").ValueName("FILE");
  return program;
}

}  // namespace

WindowsCommands::WindowsCommands(const std::string& name) : program(WithoutWindows(name, global)) {}

}  // namespace mirelo::app
