#include "app/quote_rows.h"

#include "automation/text.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "snapshot/column_vocabulary.h"

namespace mirelo::app {

std::vector<std::string> VisibleColumns() {
  return Split(mGlobal::AppSettings().GetSetting("Settings", "ListRight", kDefaultListRight).ToText(), ",");
}

}  // namespace mirelo::app
