#pragma once

#include <xlsxwriter.h>

#include <vector>

#include "adapters/workbook/model/condition.h"
#include "adapters/workbook/model/style_table.h"

namespace mirelo::workbook {

// A colour as the file writer takes it.
lxw_color_t WriterColor(Color color);

// Makes the file writer's formats for a workbook's styles, each when it is first wanted, and for the
// differential formats that conditions give.
class FormatWriter {
 public:
  FormatWriter(lxw_workbook* workbook, const StyleTable& styles)
      : workbook_(workbook), styles_(styles), formats_(styles.Count(), nullptr) {}

  const StyleTable& styles() const { return styles_; }

  lxw_format* For(StyleId id);
  // A format of its own for each call; null when the differential one changes nothing.
  lxw_format* For(const DifferentialFormat& differential);

 private:
  lxw_format* Add();

  lxw_workbook* workbook_;
  const StyleTable& styles_;
  std::vector<lxw_format*> formats_;  // owned by the workbook
};

}  // namespace mirelo::workbook
