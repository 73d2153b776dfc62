// The program mirelo-windows: the commands of mirelo that show windows. It is what mirelo becomes for them.

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <optional>

#include "adapters/qt/application.h"
#include "app/dialog_command.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/run_command.h"
#include "app/window_program.h"
#include "app/windows.h"

namespace {

using namespace mirelo;
using namespace mirelo::app;

int Main(int argc, char** argv) {
  CLI::App program("The windows of Mirelo; see mirelo --help", "mirelo");
  program.require_subcommand(1);
  program.fallthrough();
  GlobalOptions global;
  global.words.assign(argv + 1, argv + argc);
  program.add_option("--registry", global.registry, "As of mirelo");
  DialogCommand dialog(program, global);
  RunCommand run(program, global);
  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return program.exit(error) == 0 ? kGood : kWrongUsage;
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
