#pragma once

#include <string>
#include <vector>

#include "adapters/workbook/model/condition.h"
#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/color_reader.h"
#include "adapters/workbook/xlsx/losses.h"
#include "adapters/workbook/xlsx/package.h"
#include "spreadsheet/style.h"

namespace mirelo::workbook {

// What a file's style part lists, in the order in which the sheets refer to it.
struct FileStyles {
  std::vector<Style> cells;                      // never empty
  std::vector<DifferentialFormat> differential;  // of conditional formats
  std::vector<bool> are_lossy;                   // cells' formats: whether something of them was told as lost
  bool are_differential_lossy = false;           // the same for any of the differential formats
};

FileStyles ReadStyles(Package& package, const std::string& part, ColorReader& colors, Losses& losses);

}  // namespace mirelo::workbook
