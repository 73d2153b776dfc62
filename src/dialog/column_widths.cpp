#include <cstdint>

#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"

namespace mirelo {

void frmMirelo::StoreColumnWidths(Frame& frame) {
  for (const std::int32_t column : frame.loop([&] { return Bounds{0, FG.Cols() - 1}; })) {
    if (frame.test([&] { return !FG.TextMatrix(0, column).empty(); })) {
      STEP(Store().SaveSetting("Settings\\WidthField", FG.TextMatrix(0, column),
                               Variant(FG.ColWidth(column))));
    }
  }
}

}  // namespace mirelo
