#include "app/commands/go_command.h"

#include <cstdint>
#include <memory>
#include <string>

#include "app/calc/command_in_office.h"
#include "app/calc/office_place.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/session.h"
#include "app/workbook/workbook_file.h"
#include "automation/text.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "core/setting_names.h"
#include "day/after_go.h"
#include "day/dialog_result.h"
#include "day/stored_source.h"
#include "person/attended_desktop.h"
#include "person/dialog_person.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

namespace {

std::string Stored(const char* key) {
  return mGlobal::AppSettings().GetSetting(catalogue::kSettings, key, "").ToText();
}

}  // namespace

GoCommand::GoCommand(command_line::Command& program, const GlobalOptions& global)
    : global_(global),
      command_(program.AddCommand(
          "go",
          "Fill the settings dialog without showing it, and press its Go: check and store the settings")) {
  wishes_.emplace(command_);
  command_
      .AddOption("--workbook", workbook_,
                 "The .xlsx file whose quote table the dialog reads, and in which Go builds it; made when "
                 "it is absent. Without it the table is built in a workbook that is not kept")
      .ValueName("FILE");
  through_.emplace(command_, workbook_);
  command_.Footer(
      "What is not named stays as the dialog shows it. QuoteTracker must run: the dialog asks it for its\n"
      "portfolios before it stores anything but the widths of columns. Message boxes are printed as lines.\n"
      "Exit codes: 0 committed, 1 not committed or not saved, 2 asked for something that the dialog lacks.");
}

bool GoCommand::IsChosen() const { return command_.IsChosen(); }

int GoCommand::Run() try {
  if (through_->IsElsewhere(global_)) return RunInOffice(FindOffice(), global_.words);
  DialogWishes wishes = wishes_->Wishes();
  Session session(global_);
  TakeList(wishes);
  for (const auto& setting : wishes.settings) session.given_here.insert(setting.key);
  session.accepts_costs = wishes.accepts_costs;
  auto desktop = std::make_unique<AttendedDesktop>();
  AttendedDesktop& shown = *desktop;
  session.host().ShowOn(std::move(desktop));
  const DialogPerson person(wishes, shown);

  auto& facade = session.facade();
  host::Documents& documents = session.documents();
  const auto hold = IsKept() ? HoldForGo(documents, workbook_) : nullptr;
  const auto document = IsKept() ? OpenOrNew(documents, workbook_) : documents.New();
  session.document = document.get();
  facade.ExcelApplication(Variant(document->Application()));
  const std::int32_t result = facade.LoadFrmMirelo();
  if (session.refused_costs) return kFailed;
  if (const auto& complaint = person.Complained()) {
    Err() << "error: " << terminal::Indented(complaint->text) << "\nNothing was committed.\n";
    return complaint->is_of_wish ? kWrongUsage : kFailed;
  }
  if (day::IsCommitted(result)) day::FinishGo(facade);
  if (IsKept() && day::IsCommitted(result)) SaveAfterGo(workbook_, *document);
  return Report(result, shown.Messages());
} catch (const Unfulfilled& unfulfilled) {
  Err() << "error: " << terminal::Indented(unfulfilled.what()) << "\n";
  return kWrongUsage;
}

int GoCommand::Report(std::int32_t result, int messages) {
  if (result == day::kToStream) {
    Out() << "Committed: quotes are to be streamed from " << Trim(day::ChosenSource()) << "\n";
    return kGood;
  }
  if (result == day::kToAsk) {
    const bool once = Stored("UpdateEvery") == "0";
    Out() << "Committed: quotes are to be asked for "
          << (once ? "once" : "every " + Stored("Seconds") + " seconds") << "\n";
    return kGood;
  }
  if (messages == 0) Err() << "QuoteTracker has no portfolio; make one there.\n";
  Err() << "error: nothing was committed\n";
  return kFailed;
}

}  // namespace mirelo::app
