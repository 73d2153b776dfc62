#include "app/show_dialog.h"

#include <cstdint>
#include <iostream>

#include "adapters/workbook/spreadsheet.h"
#include "app/dialog_result.h"
#include "app/exit_code.h"
#include "app/session.h"
#include "app/workbook_file.h"
#include "automation/variant.h"

namespace mirelo::app {

int ShowDialog(Session& session, const std::optional<std::filesystem::path>& workbook) {
  std::optional<workbook::FileHold> hold;
  if (workbook) hold = HoldForGo(*workbook);
  auto spreadsheet = workbook ? OpenOrNew(*workbook) : workbook::Spreadsheet::New();
  auto& facade = session.facade();
  facade.ExcelApplication(Variant(spreadsheet.Application()));
  const std::int32_t result = facade.LoadFrmMirelo();
  const bool committed = IsCommitted(result);
  if (committed && workbook) SaveAfterGo(*workbook, spreadsheet);
  std::cout << result << '\n';
  return committed ? kGood : kFailed;
}

}  // namespace mirelo::app
