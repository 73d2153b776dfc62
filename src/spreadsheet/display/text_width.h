#pragma once

#include <string_view>

namespace mirelo::spreadsheet {

// How wide the widest line of a text is, in pixels of a 96 dpi screen: an estimate from the kinds of its
// letters.
double WidthOfText(std::string_view text, double font_size, bool bold);

}  // namespace mirelo::spreadsheet
