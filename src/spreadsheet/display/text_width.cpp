#include "spreadsheet/display/text_width.h"

#include <algorithm>
#include <cstddef>

namespace mirelo::spreadsheet {

namespace {

constexpr double kReferenceSize = 11;  // points for which the widths below hold, in pixels at 96 dpi
constexpr double kBoldFactor = 1.07;

constexpr std::string_view kNarrow = " !'(),-./:;I[]`fijlrt{|}";
constexpr std::string_view kWide = "%&@GMOQWmw";

double LetterWidth(char c) {
  if ((static_cast<unsigned char>(c) & 0xC0) == 0x80)
    return 0;                                            // within a character that was counted at its start
  if (static_cast<unsigned char>(c) >= 0xE0) return 14;  // beyond the alphabets of two bytes: ideographs
  if (kNarrow.find(c) != std::string_view::npos) return 4.6;
  if (kWide.find(c) != std::string_view::npos) return 11;
  return 'A' <= c && c <= 'Z' ? 9 : 7.4;
}

double LineWidth(std::string_view line) {
  double width = 0;
  for (const char c : line) width += LetterWidth(c);
  return width;
}

}  // namespace

double WidthOfText(std::string_view text, double font_size, bool bold) {
  double widest = 0;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    widest = std::max(widest, LineWidth(text.substr(0, end)));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return widest * font_size / kReferenceSize * (bold ? kBoldFactor : 1);
}

}  // namespace mirelo::spreadsheet
