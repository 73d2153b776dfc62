#include "app/dialog_command.h"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <iostream>
#include <string>

#include "adapters/qt/application.h"
#include "adapters/workbook/spreadsheet.h"
#include "app/dialog_result.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/session.h"
#include "app/workbook_file.h"
#include "automation/variant.h"

namespace mirelo::app {

namespace {

constexpr const char* kWithoutWindows =
    "Without a screen, \"mirelo settings\" shows and changes the settings, and \"mirelo go\" checks and "
    "commits them as the dialog does.\n";

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
  if (const std::string why = qt::WhyNoWindows(); !why.empty()) {
    std::cerr << "error: " << why << ".\n" << kWithoutWindows;
    return kFailed;
  }
  Session session(global_);
  session.host().ShowWindows();
  return Show(session);
}

int DialogCommand::Show(Session& session) {
  auto spreadsheet = workbook_ ? OpenOrNew(*workbook_) : workbook::Spreadsheet::New();
  auto& facade = session.facade();
  facade.ExcelApplication(Variant(spreadsheet.Application()));
  const std::int32_t result = facade.LoadFrmMirelo();
  const bool committed = IsCommitted(result);
  if (committed && workbook_) {
    spreadsheet.Save(*workbook_);
    std::cerr << "Saved in " << std::filesystem::absolute(*workbook_).string() << '\n';
  }
  std::cout << result << '\n';
  return committed ? kGood : kFailed;
}

}  // namespace mirelo::app
