#include "spreadsheet/format_code.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "automation/text.h"
#include "spreadsheet/refusals.h"

namespace mirelo::spreadsheet {

namespace {

constexpr std::size_t kLongestCode = 127;  // what the library that writes files takes
constexpr std::size_t kMostSections = 4;

constexpr std::string_view kDateLetters = "dmyhsDMYHS";
constexpr std::string_view kOtherLetters = "eEgGbB";  // exponents, eras, the Buddhist year
constexpr std::array<std::string_view, 3> kWords{"General", "AM/PM", "A/P"};

// The numbers and codes of ISO/IEC 29500-1, 18.8.30, as a program of the United States shows them.
constexpr std::array<std::pair<std::uint8_t, std::string_view>, 36> kBuiltIn{{
    {0, "General"},
    {1, "0"},
    {2, "0.00"},
    {3, "#,##0"},
    {4, "#,##0.00"},
    {5, "$#,##0_);($#,##0)"},
    {6, "$#,##0_);[Red]($#,##0)"},
    {7, "$#,##0.00_);($#,##0.00)"},
    {8, "$#,##0.00_);[Red]($#,##0.00)"},
    {9, "0%"},
    {10, "0.00%"},
    {11, "0.00E+00"},
    {12, "# ?/?"},
    {13, "# ?\?/?\?"},  // the backslashes keep trigraphs away
    {14, "m/d/yyyy"},
    {15, "d-mmm-yy"},
    {16, "d-mmm"},
    {17, "mmm-yy"},
    {18, "h:mm AM/PM"},
    {19, "h:mm:ss AM/PM"},
    {20, "h:mm"},
    {21, "h:mm:ss"},
    {22, "m/d/yyyy h:mm"},
    {37, "#,##0_);(#,##0)"},
    {38, "#,##0_);[Red](#,##0)"},
    {39, "#,##0.00_);(#,##0.00)"},
    {40, "#,##0.00_);[Red](#,##0.00)"},
    {41, "_(* #,##0_);_(* (#,##0);_(* \"-\"_);_(@_)"},
    {42, "_($* #,##0_);_($* (#,##0);_($* \"-\"_);_(@_)"},
    {43, "_(* #,##0.00_);_(* (#,##0.00);_(* \"-\"?\?_);_(@_)"},
    {44, "_($* #,##0.00_);_($* (#,##0.00);_($* \"-\"?\?_);_(@_)"},
    {45, "mm:ss"},
    {46, "[h]:mm:ss"},
    {47, "mm:ss.0"},
    {48, "##0.0E+0"},
    {49, "@"},
}};

constexpr bool IsCodeLetter(char c) { return ('a' <= c && c <= 'z') || ('A' <= c && c <= 'Z'); }

constexpr bool IsControl(char c) { return static_cast<unsigned char>(c) < ' '; }

// [h], [mm], [ss]: a count of hours, minutes or seconds.
bool IsElapsedTime(std::string_view bracketed) {
  const std::string_view inner = bracketed.substr(1, bracketed.size() - 2);
  return !inner.empty() && inner.find_first_not_of("hmsHMS") == std::string_view::npos;
}

std::size_t WordLength(std::string_view code) {
  for (const std::string_view word : kWords) {
    if (EqualText(code.substr(0, word.size()), word)) return word.size();
  }
  return 0;
}

bool IsFormatCode(std::string_view code) {
  if (code.empty() || !CanBeKept(code)) return false;
  std::size_t sections = 1;
  while (!code.empty()) {
    std::size_t length = LiteralLength(code);
    if (length == std::string_view::npos) return false;
    if (length == 0) length = WordLength(code);
    if (length == 0) {
      const char c = code.front();
      const std::string_view one(&c, 1);
      if (IsCodeLetter(c) && kDateLetters.find(c) == one.npos && kOtherLetters.find(c) == one.npos)
        return false;
      if (c == ';' && ++sections > kMostSections) return false;
      length = 1;
    }
    code.remove_prefix(length);
  }
  return true;
}

}  // namespace

void CheckFormatCode(std::string_view code) {
  if (!IsFormatCode(code)) throw Refusals::NotANumberFormat(code);
}

bool CanBeKept(std::string_view code) {
  return code.size() <= kLongestCode && std::none_of(code.begin(), code.end(), IsControl);
}

bool IsDateFormat(std::string_view code) {
  while (!code.empty() && code.front() != ';') {
    std::size_t length = LiteralLength(code);
    if (length == std::string_view::npos) return false;
    if (length > 0 && code.front() == '[' && IsElapsedTime(code.substr(0, length))) return true;
    if (length == 0) {
      if (EqualText(code.substr(0, kWords[0].size()), kWords[0])) {
        length = kWords[0].size();
      } else if (kDateLetters.find(code.front()) != std::string_view::npos) {
        return true;
      } else {
        length = 1;
      }
    }
    code.remove_prefix(length);
  }
  return false;
}

FormatKind KindOfFormat(std::string_view code) {
  if (code == "General") return FormatKind::General;
  if (code == "@") return FormatKind::Text;
  return IsDateFormat(code) ? FormatKind::Date : FormatKind::Other;
}

std::vector<std::string_view> FormatSections(std::string_view code) {
  std::vector<std::string_view> sections;
  std::size_t start = 0;
  for (std::size_t i = 0; i < code.size();) {
    const std::size_t length = LiteralLength(code.substr(i));
    if (length == std::string_view::npos) break;
    if (code[i] == ';') {
      sections.push_back(code.substr(start, i - start));
      start = i + 1;
    }
    i += std::max<std::size_t>(length, 1);
  }
  sections.push_back(code.substr(start));
  return sections;
}

std::size_t LiteralLength(std::string_view code) {
  const auto through = [&](char end) {
    const std::size_t at = code.find(end, 1);
    return at == std::string_view::npos ? at : at + 1;
  };
  switch (code.front()) {
    case '"':
      return through('"');
    case '[':
      return through(']');
    case '\\':
    case '_':
    case '*': {
      if (code.size() < 2) return std::string_view::npos;
      std::size_t length = 2;  // the character may take several bytes
      while (length < code.size() && (static_cast<unsigned char>(code[length]) & 0xC0) == 0x80) ++length;
      return length;
    }
    default:
      return 0;
  }
}

std::optional<std::string_view> BuiltInFormat(std::int32_t number) {
  const auto found =
      std::find_if(kBuiltIn.begin(), kBuiltIn.end(), [&](const auto& f) { return f.first == number; });
  if (found == kBuiltIn.end()) return std::nullopt;
  return found->second;
}

std::optional<std::uint8_t> BuiltInFormatNumber(std::string_view code) {
  const auto found =
      std::find_if(kBuiltIn.begin(), kBuiltIn.end(), [&](const auto& f) { return f.second == code; });
  if (found == kBuiltIn.end()) return std::nullopt;
  return found->first;
}

}  // namespace mirelo::spreadsheet
