#pragma once

namespace mirelo::spreadsheet {

inline constexpr double kPointsPerPixel = 0.75;  // of a 96 dpi screen

}  // namespace mirelo::spreadsheet
