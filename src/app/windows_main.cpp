// The program mirelo-windows: the commands of mirelo that show windows. It is what mirelo becomes for them.

#include "adapters/qt/application.h"
#include "app/commands/windows_commands.h"
#include "app/exit_code.h"
#include "app/run_program.h"
#include "app/window_program.h"
#include "app/windows.h"
#include "terminal/standard_streams.h"

namespace {

using namespace mirelo;
using namespace mirelo::app;

int Main(int argc, char** argv) {
  WindowsCommands commands;
  auto& [global, program, dialog, open, run] = commands;
  global.words.assign(argv + 1, argv + argc);
  if (const auto ending = program.Read(argc, argv)) return EndReading(program, *ending);

  if (const std::string why = qt::WhyNoWindows(); !why.empty()) {
    terminal::Err() << "error: " << why << ".\n" << kWithoutWindows;
    return kFailed;
  }
  const qt::Application application;
  global.show_windows = ShowWindows;
  global.show_alone = ShowAlone;
  if (open.IsChosen()) return open.Run();
  return dialog.IsChosen() ? dialog.Run() : run.Run();
}

}  // namespace

int main(int argc, char** argv) {
  return RunProgram([&] { return Main(argc, argv); });
}
