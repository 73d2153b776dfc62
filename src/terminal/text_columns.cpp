#include "terminal/text_columns.h"

#include <algorithm>
#include <iterator>

#include "automation/utf8.h"

namespace mirelo::terminal {

namespace {

constexpr const char* kEllipsis = "…";

struct Characters {
  char32_t first;
  char32_t last;
};

// Characters that add no width: marks that combine, joiners, selectors of variants.
constexpr Characters kNarrowest[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x064B, 0x065F},   {0x0E31, 0x0E31},
    {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF},   {0x200B, 0x200D},
    {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0x1F3FB, 0x1F3FF}, {0xE0100, 0xE01EF}};

// Characters of double width.
constexpr Characters kWide[] = {{0x1100, 0x115F},  {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xA960, 0xA97F},
                                {0xAC00, 0xD7A3},  {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF01, 0xFF60},
                                {0xFFE0, 0xFFE6},  {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF},
                                {0x20000, 0x3FFFD}};

template <std::size_t N>
bool Holds(const Characters (&list)[N], char32_t character) {
  return std::any_of(std::begin(list), std::end(list), [&](const Characters& range) {
    return range.first <= character && character <= range.last;
  });
}

// A byte that is no UTF-8 is a character of its own.
std::size_t WidthOf(char32_t character) {
  if (character < 0x0300) return 1;
  return Holds(kNarrowest, character) ? 0 : Holds(kWide, character) ? 2 : 1;
}

}  // namespace

std::size_t ColumnsOf(std::string_view text) {
  std::size_t columns = 0;
  for (std::size_t position = 0; position < text.size();) {
    const utf8::Character next = utf8::Decode(text, position);
    columns += WidthOf(next.code);
    position += next.length;
  }
  return columns;
}

std::string_view FirstColumns(std::string_view text, std::size_t columns) {
  std::size_t bytes = 0;
  std::size_t width = 0;
  while (bytes < text.size()) {
    const utf8::Character next = utf8::Decode(text, bytes);
    width += WidthOf(next.code);
    if (width > columns) break;
    bytes += next.length;
  }
  return text.substr(0, bytes);
}

std::string Shortened(std::string_view text, std::size_t columns) {
  if (ColumnsOf(text) <= columns) return std::string(text);
  return std::string(FirstColumns(text, columns - 1)) + kEllipsis;
}

}  // namespace mirelo::terminal
