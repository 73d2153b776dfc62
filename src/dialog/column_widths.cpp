#include "dialog/column_widths.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/setting_names.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"

namespace mirelo {

void StoreColumnWidths(Frame& frame, const frmMirelo& form) {
  const forms::Grid& FG = form.FG;
  for (const std::int32_t column : frame.loop([&] { return Bounds{0, FG.Cols() - 1}; })) {
    if (frame.test([&] { return !FG.TextMatrix(0, column).empty(); })) {
      STEP(Referred(form.frmAppSettings())
               .SaveSetting(catalogue::kWidths, FG.TextMatrix(0, column), Variant(FG.ColWidth(column))));
    }
  }
}

std::int32_t StoredColumnWidth(const frmMirelo& form, const std::string& header,
                               std::string_view default_width) {
  return Referred(form.frmAppSettings())
      .GetSetting(catalogue::kWidths, header, Variant(default_width))
      .ToInt32();
}

}  // namespace mirelo
