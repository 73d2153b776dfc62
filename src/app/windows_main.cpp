// The program mirelo-windows: shows the settings dialog. It is what mirelo dialog becomes.

#include <CLI/CLI.hpp>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>

#include "adapters/qt/application.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/session.h"
#include "app/show_dialog.h"
#include "app/windows.h"
#include "app/without_windows.h"

namespace {

using namespace mirelo;
using namespace mirelo::app;

int Main(int argc, char** argv) {
  CLI::App program("Shows the settings dialog of Mirelo; see mirelo dialog --help", "mirelo-windows");
  GlobalOptions global;
  std::optional<std::filesystem::path> workbook;
  program.add_option("--registry", global.registry, "As of mirelo");
  program.add_option("--workbook", workbook, "As of mirelo dialog");
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
  Session session(global);
  ShowWindows(session.host());
  return ShowDialog(session, workbook);
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
