#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "adapters/workbook/model/style.h"
#include "adapters/workbook/xlsx/color_reader.h"
#include "adapters/workbook/xlsx/losses.h"
#include "adapters/workbook/xlsx/package.h"

namespace mirelo::workbook {

// The cell formats of a file's style part, in the order in which cells refer to them; never empty.
std::vector<Style> ReadStyles(Package& package, const std::string& part, ColorReader& colors, Losses& losses);

}  // namespace mirelo::workbook
