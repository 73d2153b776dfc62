// The widths of the grid's columns, kept by the columns' headers.

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/settings_table.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"

namespace mirelo {

void frmMirelo::StoreColumnWidths(Frame& frame) {
  for (const std::int32_t column : frame.loop([&] { return Bounds{0, FG.Cols() - 1}; })) {
    if (frame.test([&] { return !FG.TextMatrix(0, column).empty(); })) {
      STEP(Store().SaveSetting(catalogue::kWidths, FG.TextMatrix(0, column), Variant(FG.ColWidth(column))));
    }
  }
}

std::int32_t frmMirelo::StoredColumnWidth(const std::string& header, std::string_view default_width) const {
  return Store().GetSetting(catalogue::kWidths, header, Variant(default_width)).ToInt32();
}

}  // namespace mirelo
