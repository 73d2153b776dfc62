#include "quotetracker/price.h"

#include <charconv>

namespace mirelo::quotetracker {
namespace {

constexpr int kDecimals = 4;
constexpr std::size_t kMostWholeDigits = 12;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

char* WritePrice(char* at, Price price) {
  if (price < 0) *at++ = '-';
  const auto size = price < 0 ? 0 - static_cast<std::uint64_t>(price) : static_cast<std::uint64_t>(price);
  at = std::to_chars(at, at + kPriceWidth, size / kPriceUnit).ptr;
  *at++ = '.';
  auto rest = static_cast<unsigned>(size % kPriceUnit);
  for (int i = kDecimals - 1; i >= 0; --i, rest /= 10) at[i] = static_cast<char>('0' + rest % 10);
  int shown = kDecimals;
  while (shown > 2 && at[shown - 1] == '0') --shown;
  return at + shown;
}

std::optional<Price> ParsePrice(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);

  Price value = 0;
  std::size_t digits = 0;
  for (; digits < text.size() && IsDigit(text[digits]); ++digits) {
    if (digits == kMostWholeDigits) return std::nullopt;
    value = value * 10 + (text[digits] - '0');
  }
  std::size_t at = digits;
  int decimals = 0;
  if (at < text.size() && text[at] == '.') {
    for (++at; at < text.size() && IsDigit(text[at]); ++at, ++digits) {
      if (decimals < kDecimals) {
        value = value * 10 + (text[at] - '0');
        ++decimals;
      } else if (text[at] != '0') {
        return std::nullopt;
      }
    }
  }
  if (digits == 0 || at != text.size()) return std::nullopt;
  for (; decimals < kDecimals; ++decimals) value *= 10;
  return negative ? -value : value;
}

}  // namespace mirelo::quotetracker
