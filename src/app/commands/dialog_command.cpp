#include "app/commands/dialog_command.h"

#include "app/commands/open_command.h"
#include "app/dialog/show_dialog.h"
#include "app/options.h"
#include "app/session.h"
#include "app/window_program.h"
#include "app/workbook/spreadsheet_program.h"

namespace mirelo::app {

DialogCommand::DialogCommand(command_line::Command& program, const GlobalOptions& global)
    : global_(global), command_(program.AddCommand("dialog", "Show the settings dialog")) {
  command_
      .AddOption("--workbook", workbook_,
                 "The .xlsx file for which the dialog is shown, and in which Go builds the table; made "
                 "when it is absent. Without it this is mirelo open")
      .ValueName("FILE")
      .Check(WhyNoWorkbook);
  command_.Footer(
      "With --workbook, prints how the dialog was ended: 77 (committed, quotes are to be streamed), 78 "
      "(committed, quotes "
      "are\n"
      "to be asked for) or 2 (nothing was committed). Exit codes: 0 committed, 1 not committed.");
}

bool DialogCommand::IsChosen() const { return command_.IsChosen(); }

int DialogCommand::Run() {
  if (!global_.show_windows) return BecomeWindowProgram(global_.words);
  if (!workbook_) return OpenOnScreen(global_, workbook_);
  Session session(global_);
  const auto screen = global_.show_windows(session.host());
  return ShowDialog(session, *screen, *workbook_);
}

}  // namespace mirelo::app
