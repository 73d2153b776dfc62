#include "app/dialog_command.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include "app/child_process.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/without_windows.h"

namespace mirelo::app {

namespace {

constexpr const char* kToInstall =
    "The windows are a program of their own, mirelo-windows. Install it beside mirelo; it needs Qt 6 Widgets "
    "(Debian: libqt6widgets6).\n";

}  // namespace

DialogCommand::DialogCommand(CLI::App& program, const GlobalOptions& global) : global_(global) {
  command_ = program.add_subcommand("dialog", "Show the settings dialog");
  command_->add_option("--workbook", workbook_,
                       "The .xlsx file for which the dialog is shown, and in which Go builds the table; made "
                       "when it is absent. Without it the table is built in a workbook that is not kept");
  command_->footer(
      "Prints how the dialog was ended: 77 (committed, quotes are to be streamed), 78 (committed, quotes "
      "are\n"
      "to be asked for) or 2 (nothing was committed). Exit codes: 0 committed, 1 not committed.");
}

bool DialogCommand::IsChosen() const { return command_->parsed(); }

int DialogCommand::Run() {
  const std::filesystem::path program = ProgramFolder() / "mirelo-windows";
  std::vector<std::string> arguments{program.string()};
  if (global_.registry) arguments.insert(arguments.end(), {"--registry", global_.registry->string()});
  if (workbook_) arguments.insert(arguments.end(), {"--workbook", workbook_->string()});

  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  ::execv(program.c_str(), pointers.data());
  std::cerr << "error: cannot start " << program.string() << ": " << std::strerror(errno) << ".\n"
            << kToInstall << kWithoutWindows;
  return kFailed;
}

}  // namespace mirelo::app
