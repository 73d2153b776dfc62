#include "app/show_dialog.h"

#include <cstdint>

#include "adapters/workbook/file_stamp.h"
#include "adapters/workbook/spreadsheet.h"
#include "app/dialog_result.h"
#include "app/exit_code.h"
#include "app/session.h"
#include "app/workbook_file.h"
#include "automation/variant.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Out;

int ShowDialog(Session& session, const std::optional<std::filesystem::path>& workbook) {
  std::optional<workbook::FileHold> hold;
  if (workbook) hold = HoldForGo(*workbook);
  const auto read = workbook ? workbook::FileStamp(*workbook) : workbook::FileStamp();
  auto spreadsheet = workbook ? OpenOrNew(*workbook) : workbook::Spreadsheet::New();
  auto& facade = session.facade();
  facade.ExcelApplication(Variant(spreadsheet.Application()));
  const std::int32_t result = facade.LoadFrmMirelo();
  const bool committed = IsCommitted(result);
  if (committed && workbook) SaveAfterGo(*workbook, spreadsheet, read);
  Out() << result << "\n";
  return committed ? kGood : kFailed;
}

}  // namespace mirelo::app
