#pragma once

#include <xlsxwriter.h>

#include <vector>

#include "adapters/workbook/model/style_table.h"

namespace mirelo::workbook {

// Makes the file writer's formats for a workbook's styles, each when it is first wanted.
class FormatWriter {
 public:
  FormatWriter(lxw_workbook* workbook, const StyleTable& styles)
      : workbook_(workbook), styles_(styles), formats_(styles.Count(), nullptr) {}

  lxw_format* For(StyleId id);

 private:
  lxw_workbook* workbook_;
  const StyleTable& styles_;
  std::vector<lxw_format*> formats_;  // owned by the workbook
};

}  // namespace mirelo::workbook
