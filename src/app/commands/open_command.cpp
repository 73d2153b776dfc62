#include "app/commands/open_command.h"

#include <exception>
#include <string>

#include "app/dialog/dialog_on_screen.h"
#include "app/dialog/screen.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/run_program.h"
#include "app/session.h"
#include "app/window_program.h"
#include "app/workbook/last_workbook.h"
#include "automation/runtime_error.h"
#include "automation/visible_text.h"

namespace mirelo::app {

OpenCommand::OpenCommand(command_line::Command& program, const GlobalOptions& global)
    : global_(global),
      command_(program.AddCommand(
          "open",
          "Show the settings dialog for a workbook, as the menu's entry does, and tell all in windows")) {
  command_.AddArgument(
      "FILE", workbook_,
      "The .xlsx file; without it the last one that a dialog was shown for, or else one that a "
      "window asks for");
  command_.Footer(
      "Prints nothing. The window says in which workbook Go saves, and takes another one. Exit codes: 0 the\n"
      "workbook holds what Go has built, 1 it does not, or nothing was committed.");
}

bool OpenCommand::IsChosen() const { return command_.IsChosen(); }

int OpenCommand::Run() {
  if (!global_.show_windows) return BecomeWindowProgram(global_.words);
  return OpenOnScreen(global_, workbook_);
}

int OpenOnScreen(const GlobalOptions& global, const std::optional<std::filesystem::path>& workbook) try {
  Session session(global);
  const auto screen = global.show_windows(session.host());
  const LastWorkbook last;
  return DialogOnScreen(session, *screen, last).Run(workbook) ? kGood : kFailed;
} catch (const std::exception&) {
  TellFailure();
  global.show_alone()->Tell(Screen::Mood::kTrouble,
                            "Mirelo cannot go on: " + VisibleLines(CurrentError().Description()));
  return kFailed;
}

}  // namespace mirelo::app
