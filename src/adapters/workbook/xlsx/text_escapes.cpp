#include "adapters/workbook/xlsx/text_escapes.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>

#include "adapters/workbook/rules.h"
#include "automation/hex.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {

namespace {

constexpr std::size_t kEscapeLength = 7;  // _xHHHH_
constexpr std::string_view kEscapedUnderscore = "_x005F_";

constexpr bool IsHexDigit(char c) {
  return ('0' <= c && c <= '9') || ('a' <= c && c <= 'f') || ('A' <= c && c <= 'F');
}

// An escape but for the character that closes it.
bool StartsWithOpenEscape(std::string_view text) {
  return text.size() >= kEscapeLength && text[0] == '_' && text[1] == 'x' &&
         std::all_of(text.begin() + 2, text.begin() + 6, IsHexDigit);
}

bool StartsWithEscape(std::string_view text) { return StartsWithOpenEscape(text) && text[6] == '_'; }

// A control character behind it will be written as an escape, whose "_" would close this one.
bool StartsWithLookalike(std::string_view text) {
  return StartsWithOpenEscape(text) && (text[6] == '_' || static_cast<unsigned char>(text[6]) < ' ');
}

void AppendUtf8(std::string& text, std::uint32_t code) {
  if (code < 0x80) {
    text += static_cast<char>(code);
  } else if (code < 0x800) {
    text += static_cast<char>(0xC0 | code >> 6);
    text += static_cast<char>(0x80 | (code & 0x3F));
  } else {
    text += static_cast<char>(0xE0 | code >> 12);
    text += static_cast<char>(0x80 | (code >> 6 & 0x3F));
    text += static_cast<char>(0x80 | (code & 0x3F));
  }
}

// Copies the text, but where it starts with what is looked for calls replace(out, rest), which says how much
// it used up.
template <class Replace>
std::string Rewrite(std::string_view text, bool (*starts)(std::string_view), Replace&& replace) {
  std::string rewritten;
  rewritten.reserve(text.size());
  while (!text.empty()) {
    const std::size_t underscore = std::min(text.find('_'), text.size());
    rewritten += text.substr(0, underscore);
    text.remove_prefix(underscore);
    if (starts(text)) {
      text.remove_prefix(replace(rewritten, text));
    } else if (!text.empty()) {
      rewritten += '_';
      text.remove_prefix(1);
    }
  }
  return rewritten;
}

}  // namespace

std::string UnescapeText(std::string_view text) {
  if (text.find("_x") == std::string_view::npos) return CleanText(text);
  return CleanText(Rewrite(text, StartsWithEscape, [](std::string& out, std::string_view escape) {
    std::uint32_t code = 0;
    std::from_chars(escape.data() + 2, escape.data() + 6, code, 16);
    AppendUtf8(out, code);
    return kEscapeLength;
  }));
}

std::string EscapeLookalikes(std::string_view text) {
  return Rewrite(text, StartsWithLookalike, [](std::string& out, std::string_view) {
    out += kEscapedUnderscore;
    return std::size_t{1};
  });
}

std::string EscapeControls(std::string_view text) {
  std::string escaped;
  for (const char c : EscapeLookalikes(text)) {
    const auto code = static_cast<unsigned char>(c);
    if (code >= ' ' || c == '\t' || c == '\n') {
      escaped += c;
    } else {
      AppendHex(escaped += "_x00", code);
      escaped += '_';
    }
  }
  return escaped;
}

}  // namespace mirelo::workbook
