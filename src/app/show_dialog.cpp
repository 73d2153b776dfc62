#include "app/show_dialog.h"

#include <cstdint>

#include "app/exit_code.h"
#include "app/session.h"
#include "app/workbook_file.h"
#include "automation/variant.h"
#include "day/chart_labels.h"
#include "day/dialog_result.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Out;

int ShowDialog(Session& session, const std::optional<std::filesystem::path>& workbook) {
  host::Documents& documents = session.documents();
  const auto hold = workbook ? HoldForGo(documents, *workbook) : nullptr;
  const auto document = workbook ? OpenOrNew(documents, *workbook) : documents.New();
  session.document = document.get();
  auto& facade = session.facade();
  facade.ExcelApplication(Variant(document->Application()));
  const std::int32_t result = facade.LoadFrmMirelo();
  const bool committed = day::IsCommitted(result);
  if (committed) day::UncoverFirstBars(*document->Application());
  if (committed && workbook) SaveAfterGo(*workbook, *document);
  Out() << result << "\n";
  return committed ? kGood : kFailed;
}

}  // namespace mirelo::app
