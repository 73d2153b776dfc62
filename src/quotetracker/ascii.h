#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace mirelo::quotetracker {

constexpr char ToUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// Equal without regard to ASCII case.
inline bool SameText(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, ToUpper, ToUpper);
}

inline std::string UpperCase(std::string_view text) {
  std::string upper(text);
  std::ranges::transform(upper, upper.begin(), ToUpper);
  return upper;
}

// The text without blanks and tabs at either end.
inline std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

}  // namespace mirelo::quotetracker
