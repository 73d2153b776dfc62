#include "app/mirelo_program.h"

#include <string>
#include <utility>

#include "app/commands/calc_command.h"
#include "app/commands/credentials_command.h"
#include "app/commands/dialog_command.h"
#include "app/commands/export_command.h"
#include "app/commands/go_command.h"
#include "app/commands/list_command.h"
#include "app/commands/open_command.h"
#include "app/commands/quotes_command.h"
#include "app/commands/run_command.h"
#include "app/commands/settings_command.h"
#include "app/commands/show_command.h"
#include "app/commands/sources_command.h"
#include "app/commands/stream_command.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/run_program.h"
#include "command_line/command.h"
#include "core/product.h"

namespace mirelo::app {

namespace {

constexpr const char* kDescription =
    "Mirelo brings market quotes from QuoteTracker into spreadsheets.\n"
    "Each command has its own --help. Exit codes: 0 good, 1 the operation failed, 2 wrong usage,\n"
    "141 whoever read the output reads no more.";

template <class... Commands>
int RunChosen(Commands&... commands) {
  int code = kGood;
  ((commands.IsChosen() ? void(code = commands.Run()) : void()), ...);
  return code;
}

// Commands take over how help works, so it is settled before they are added.
command_line::Program WithoutCommands(GlobalOptions& global) {
  command_line::Program program("mirelo", kDescription);
  program.AddVersion("mirelo " + std::string(ProductVersion()), "Print the version and end");
  program.DescribeHelp("Print this help and end");
  program.RequireCommand();
  program.TakeOptionsAnywhere();
  program
      .AddOption("--registry", global.registry,
                 "A settings file to use in place of your own ($XDG_DATA_HOME/mirelo/registry.db)")
      .ValueName("FILE");
  return program;
}

}  // namespace

struct MireloProgram::Commands {
  explicit Commands(GlobalOptions around) : global(std::move(around)) {}

  GlobalOptions global;
  command_line::Program program = WithoutCommands(global);
  RunCommand run{program, global};
  CalcCommand calc{program, global};
  DialogCommand dialog{program, global};
  OpenCommand open{program, global};
  GoCommand go{program, global};
  QuotesCommand quotes{program, global};
  StreamCommand stream{program, global};
  ShowCommand show{program};
  ExportCommand exported{program};
  SourcesCommand sources{program, global};
  ListCommand list{program, global};
  SettingsCommand settings{program, global};
  CredentialsCommand credentials{program};
};

MireloProgram::MireloProgram(GlobalOptions around)
    : commands_(std::make_unique<Commands>(std::move(around))) {}
MireloProgram::~MireloProgram() = default;

const command_line::Command& MireloProgram::tree() const { return commands_->program; }

int MireloProgram::Run(int argc, char** argv) {
  auto& [global, program, run, calc, dialog, open, go, quotes, stream, show, exported, sources, list,
         settings, credentials] = *commands_;
  global.words.assign(argv + 1, argv + argc);
  if (const auto ending = program.Read(argc, argv)) return EndReading(program, *ending);
  return RunChosen(run, calc, dialog, open, go, quotes, stream, show, exported, sources, list, settings,
                   credentials);
}

}  // namespace mirelo::app
