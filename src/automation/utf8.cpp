#include "automation/utf8.h"

#include <algorithm>
#include <cstdint>
#include <span>

#include "automation/ansi.h"
#include "automation/case_table.h"

namespace mirelo::utf8 {

namespace {

// Stray bytes take the place of the low surrogates, which UTF-8 cannot hold.
constexpr char32_t kStrayByte = 0xDC00;

constexpr unsigned char Byte(std::string_view text, std::size_t position) {
  return static_cast<unsigned char>(text[position]);
}

Character Stray(std::string_view text, std::size_t position) {
  return {kStrayByte + Byte(text, position), 1};
}

char32_t OtherCase(std::span<const CaseRun> runs, char32_t code) {
  const auto run = std::ranges::lower_bound(runs, code, {}, &CaseRun::last);
  if (run == runs.end() || code < run->first || (code - run->first) % run->step != 0) return code;
  return static_cast<char32_t>(static_cast<std::int32_t>(code) + run->distance);
}

}  // namespace

Character Decode(std::string_view text, std::size_t position) {
  const unsigned char lead = Byte(text, position);
  if (lead < 0x80) return {lead, 1};
  if (lead < 0xC2 || lead > 0xF4) return Stray(text, position);

  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (text.size() - position < length) return Stray(text, position);
  char32_t code = lead & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned char next = Byte(text, position + i);
    if ((next & 0xC0) != 0x80) return Stray(text, position);
    code = (code << 6) | (next & 0x3Fu);
  }
  const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  const bool surrogate = code >= 0xD800 && code < 0xE000;
  if (overlong || surrogate || code > 0x10FFFF) return Stray(text, position);
  return {code, length};
}

void Append(std::string& text, char32_t code) {
  const auto tail = [code](int shift) { return static_cast<char>(0x80 | ((code >> shift) & 0x3F)); };
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += {static_cast<char>(0xC0 | (code >> 6)), tail(0)};
  } else if (code >= kStrayByte && code < kStrayByte + 0x100) {
    text += static_cast<char>(code - kStrayByte);
  } else if (code < 0x10000) {
    text += {static_cast<char>(0xE0 | (code >> 12)), tail(6), tail(0)};
  } else {
    text += {static_cast<char>(0xF0 | (code >> 18)), tail(12), tail(6), tail(0)};
  }
}

std::size_t Offset(std::string_view text, std::size_t count) {
  std::size_t position = 0;
  for (; count > 0 && position < text.size(); --count) position += Decode(text, position).length;
  return position;
}

std::size_t Count(std::string_view text) {
  if (IsAscii(text)) return text.size();
  std::size_t count = 0;
  for (std::size_t position = 0; position < text.size(); position += Decode(text, position).length) ++count;
  return count;
}

char32_t Upper(char32_t code) {
  if (code < 0x80) return code >= 'a' && code <= 'z' ? code - 0x20 : code;
  return OtherCase(RunsToUpper(), code);
}

char32_t Lower(char32_t code) {
  if (code < 0x80) return code >= 'A' && code <= 'Z' ? code + 0x20 : code;
  return OtherCase(RunsToLower(), code);
}

std::size_t MatchIgnoringCase(std::string_view text, std::string_view what) {
  std::size_t position = 0;
  for (std::size_t i = 0; i < what.size();) {
    if (position == text.size()) return kNoMatch;
    const unsigned char at = Byte(text, position);
    const unsigned char wanted = Byte(what, i);
    if (at < 0x80 && wanted < 0x80) {
      if (Lower(at) != Lower(wanted)) return kNoMatch;
      ++position;
      ++i;
      continue;
    }
    const Character a = Decode(text, position);
    const Character b = Decode(what, i);
    if (a.code != b.code && Lower(a.code) != Lower(b.code)) return kNoMatch;
    position += a.length;
    i += b.length;
  }
  return position;
}

}  // namespace mirelo::utf8
