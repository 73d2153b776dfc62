#include "app/dialog/show_dialog.h"

#include <cstdint>

#include "app/dialog/screen.h"
#include "app/exit_code.h"
#include "app/session.h"
#include "app/workbook/last_workbook.h"
#include "app/workbook/workbook_file.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "day/after_go.h"
#include "day/dialog_result.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

namespace {

// For the menu's entry. It is not what the command was asked for, so a failure is a warning.
void RememberAsLast(const std::filesystem::path& workbook) try {
  LastWorkbook().Remember(workbook);
} catch (const RuntimeError& error) {
  Err() << "warning: the workbook is not remembered for the menu's entry: " << error.Description() << "\n";
}

}  // namespace

void SayWhereItSaves(Screen& screen, const std::filesystem::path& workbook) {
  screen.PutAbove("frmMirelo", {WhereGoSaves(workbook), "", {}});
}

int ShowDialog(Session& session, Screen& screen, const std::filesystem::path& workbook) {
  host::Documents& documents = session.documents();
  const auto hold = HoldForGo(documents, workbook);
  const auto document = OpenOrNew(documents, workbook);
  session.document = document.get();
  SayWhereItSaves(screen, workbook);
  auto& facade = session.facade();
  facade.ExcelApplication(Variant(document->Application()));
  const std::int32_t result = facade.LoadFrmMirelo();
  const bool committed = day::IsCommitted(result);
  if (committed) {
    day::FinishGo(facade);
    SaveAfterGo(workbook, *document);
    RememberAsLast(workbook);
  }
  Out() << result << "\n";
  return committed ? kGood : kFailed;
}

}  // namespace mirelo::app
