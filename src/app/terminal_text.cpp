#include "app/terminal_text.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace mirelo::app {

namespace {

constexpr const char* kEllipsis = "…";
constexpr const char* kReplacement = "\uFFFD";

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

// Characters that a terminal obeys: both sets of controls, and what turns the direction of text or ends a
// line.
constexpr Characters kObeyed[] = {{0x0000, 0x001F}, {0x007F, 0x009F}, {0x061C, 0x061C},
                                  {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}};

template <std::size_t N>
bool Holds(const Characters (&list)[N], char32_t character) {
  return std::any_of(std::begin(list), std::end(list), [&](const Characters& range) {
    return range.first <= character && character <= range.last;
  });
}

struct Decoded {
  char32_t character = 0;
  std::size_t bytes = 1;
  bool is_valid = false;
};

// The character at the text's start.
Decoded DecodeFirst(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return {lead, 1, true};
  const std::size_t bytes = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < bytes) return {};
  char32_t character = lead & (0x7Fu >> bytes);
  for (std::size_t i = 1; i < bytes; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return {};
    character = character << 6 | (byte(i) & 0x3Fu);
  }
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool is_surrogate = 0xD800 <= character && character <= 0xDFFF;
  if (character < kLeast[bytes] || is_surrogate || character > 0x10FFFF) return {};
  return {character, bytes, true};
}

std::size_t WidthOf(char32_t character) {
  if (character < 0x0300) return 1;
  return Holds(kNarrowest, character) ? 0 : Holds(kWide, character) ? 2 : 1;
}

}  // namespace

std::size_t ColumnsOf(std::string_view text) {
  std::size_t columns = 0;
  while (!text.empty()) {
    const Decoded first = DecodeFirst(text);
    columns += first.is_valid ? WidthOf(first.character) : 1;
    text.remove_prefix(first.bytes);
  }
  return columns;
}

std::string_view FirstColumns(std::string_view text, std::size_t columns) {
  std::size_t bytes = 0;
  std::size_t width = 0;
  while (bytes < text.size()) {
    const Decoded next = DecodeFirst(text.substr(bytes));
    width += next.is_valid ? WidthOf(next.character) : 1;
    if (width > columns) break;
    bytes += next.bytes;
  }
  return text.substr(0, bytes);
}

std::string Shortened(std::string_view text, std::size_t columns) {
  if (ColumnsOf(text) <= columns) return std::string(text);
  return std::string(FirstColumns(text, columns - 1)) + kEllipsis;
}

std::string Printable(std::string_view text) {
  std::string printable;
  while (!text.empty()) {
    const Decoded first = DecodeFirst(text);
    if (!first.is_valid) {
      printable += kReplacement;
    } else if (Holds(kObeyed, first.character)) {
      printable += ' ';
    } else {
      printable += text.substr(0, first.bytes);
    }
    text.remove_prefix(first.bytes);
  }
  return printable;
}

}  // namespace mirelo::app
