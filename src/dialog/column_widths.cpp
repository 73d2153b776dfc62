// The widths of the grid's columns, kept by the columns' headers.

#include <cstdint>
#include <string>

#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"

namespace mirelo {

namespace {

constexpr const char* kSection = "Settings\\WidthField";

}  // namespace

void frmMirelo::StoreColumnWidths(Frame& frame) {
  for (const std::int32_t column : frame.loop([&] { return Bounds{0, FG.Cols() - 1}; })) {
    if (frame.test([&] { return !FG.TextMatrix(0, column).empty(); })) {
      STEP(Store().SaveSetting(kSection, FG.TextMatrix(0, column), Variant(FG.ColWidth(column))));
    }
  }
}

std::int32_t frmMirelo::StoredColumnWidth(const std::string& header, const char* default_width) const {
  return Store().GetSetting(kSection, header, default_width).ToInt32();
}

}  // namespace mirelo
