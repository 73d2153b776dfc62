// The program mirelo: it plays the part of the spreadsheet's macros, which call the library.

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "app/credentials_command.h"
#include "app/dialog_command.h"
#include "app/exit_code.h"
#include "app/go_command.h"
#include "app/options.h"
#include "app/quotes_command.h"
#include "app/run_command.h"
#include "app/settings_command.h"
#include "app/show_command.h"
#include "app/sources_command.h"
#include "app/stream_command.h"

namespace {

using namespace mirelo::app;

constexpr const char* kDescription =
    "Mirelo brings market quotes from QuoteTracker into spreadsheets.\n"
    "Each command has its own --help. Exit codes: 0 good, 1 the operation failed, 2 wrong usage.";

template <class... Commands>
int RunChosen(Commands&... commands) {
  int code = kGood;
  ((commands.IsChosen() ? void(code = commands.Run()) : void()), ...);
  return code;
}

int Main(int argc, char** argv) {
  CLI::App program(kDescription, "mirelo");
  program.set_version_flag("--version", "mirelo " MIRELO_VERSION, "Print the version and end");
  program.set_help_flag("-h,--help", "Print this help and end");
  program.require_subcommand(1);
  program.fallthrough();

  GlobalOptions global;
  global.words.assign(argv + 1, argv + argc);
  program.add_option("--registry", global.registry,
                     "A settings file to use in place of your own ($XDG_DATA_HOME/mirelo/registry.db)");
  RunCommand run(program, global);
  DialogCommand dialog(program, global);
  GoCommand go(program, global);
  QuotesCommand quotes(program, global);
  StreamCommand stream(program, global);
  ShowCommand show(program);
  SourcesCommand sources(program, global);
  SettingsCommand settings(program, global);
  CredentialsCommand credentials(program);

  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return program.exit(error) == 0 ? kGood : kWrongUsage;
  }
  return RunChosen(run, dialog, go, quotes, stream, show, sources, settings, credentials);
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
