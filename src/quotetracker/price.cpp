#include "quotetracker/price.h"

#include <charconv>

namespace mirelo::quotetracker {
namespace {

constexpr int kDecimals = 4;
constexpr std::size_t kMostWholeDigits = 12;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

void AppendPrice(std::string& text, Price price) {
  char buffer[32];
  char* end = buffer;
  if (price < 0) *end++ = '-';
  const Price size = price < 0 ? -price : price;
  end = std::to_chars(end, buffer + 24, size / kPriceUnit).ptr;
  *end++ = '.';
  Price rest = size % kPriceUnit;
  for (Price place = kPriceUnit / 10; place >= kCent || rest > 0; place /= 10) {
    *end++ = static_cast<char>('0' + rest / place);
    rest %= place;
  }
  text.append(buffer, end);
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
