#include "app/commands/windows_commands.h"

#include <CLI/CLI.hpp>

namespace mirelo::app {

namespace {

// It speaks as mirelo, which becomes it.
std::unique_ptr<CLI::App> WithoutWindows(GlobalOptions& global) {
  auto program = std::make_unique<CLI::App>("The windows of Mirelo; see mirelo --help", "mirelo");
  program->require_subcommand(1);
  program->fallthrough();
  program->add_option("--registry", global.registry, "As of mirelo")->type_name("FILE");
  return program;
}

}  // namespace

WindowsCommands::WindowsCommands()
    : program(WithoutWindows(global)),
      dialog(*program, global),
      open(*program, global),
      run(*program, global) {}
WindowsCommands::~WindowsCommands() = default;

}  // namespace mirelo::app
