// The program mirelo-windows: the commands of mirelo that show windows. It is what mirelo becomes for them.

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "adapters/qt/application.h"
#include "app/exit_code.h"
#include "app/window_program.h"
#include "app/windows.h"
#include "app/windows_commands.h"

namespace {

using namespace mirelo;
using namespace mirelo::app;

int Main(int argc, char** argv) {
  WindowsCommands commands;
  auto& [global, program, dialog, run] = commands;
  global.words.assign(argv + 1, argv + argc);
  try {
    program->parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return program->exit(error) == 0 ? kGood : kWrongUsage;
  }

  if (const std::string why = qt::WhyNoWindows(); !why.empty()) {
    std::cerr << "error: " << why << ".\n" << kWithoutWindows;
    return kFailed;
  }
  const qt::Application application;
  global.show_windows = ShowWindows;
  return dialog.IsChosen() ? dialog.Run() : run.Run();
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Main(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "error: " << error.what() << '\n';
    return kFailed;
  }
}
