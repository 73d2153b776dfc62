#pragma once

#include <optional>
#include <string_view>

namespace mirelo::workbook {

// The cell number of "2011-01-20", "2011-01-20T08:36:13" (fractions of a second and "Z" allowed) or
// "08:36:13".
std::optional<double> ParseIsoDate(std::string_view text);

}  // namespace mirelo::workbook
