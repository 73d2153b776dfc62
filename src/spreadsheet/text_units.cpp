#include "spreadsheet/text_units.h"

#include <algorithm>
#include <cstdint>

#include "automation/ansi.h"
#include "spreadsheet/limits.h"
#include "spreadsheet/refusals.h"

namespace mirelo::spreadsheet {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

constexpr bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// The length of the well-formed character at the start of `text`; 0 when there is none.
std::size_t CharacterLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
  if (!std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(length), IsContinuation))
    return 0;

  std::uint32_t code = lead & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3F);
  const bool is_overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  const bool is_surrogate = 0xD800 <= code && code <= 0xDFFF;
  const bool is_no_character = code == 0xFFFE || code == 0xFFFF || code > 0x10FFFF;
  return is_overlong || is_surrogate || is_no_character ? 0 : length;
}

}  // namespace

std::size_t Utf16Length(std::string_view text) {
  std::size_t units = 0;
  for (const char c : text) {
    if (!IsContinuation(c)) ++units;
    if (static_cast<unsigned char>(c) >= 0xF0) ++units;  // beyond the basic plane: a pair
  }
  return units;
}

void CheckCommentText(std::string_view text) {
  if (Utf16Length(text) > kLongestText) throw Refusals::CommentTooLong();
}

std::string CleanText(std::string_view text) {
  text = text.substr(0, text.find('\0'));
  if (IsAscii(text)) return std::string(text);
  std::string clean;
  clean.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    clean.append(length == 0 ? kReplacement : text.substr(0, length));
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return clean;
}

}  // namespace mirelo::spreadsheet
