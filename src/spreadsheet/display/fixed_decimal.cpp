#include "spreadsheet/display/fixed_decimal.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace mirelo::spreadsheet {

namespace {

constexpr int kSignificantDigits = 15;

// The number's digits without a point, and how many of them stand before it: 0 or less for numbers below 0.1.
struct Digits {
  std::string text;
  int whole = 0;
};

Digits DigitsOf(double number) {
  char buffer[32];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::scientific,
                                 kSignificantDigits - 1);
  const std::string_view text(buffer, static_cast<std::size_t>(end.ptr - buffer));  // d.dddddddddddddde+xx
  const std::size_t mark = text.find('e');
  int exponent = 0;
  const std::size_t sign = text[mark + 1] == '+' ? 1 : 0;
  std::from_chars(text.data() + mark + 1 + sign, text.data() + text.size(), exponent);
  std::string digits(text.substr(0, mark));
  digits.erase(1, 1);
  return {std::move(digits), exponent + 1};
}

// Adds one to the last digit. A carry out of the first one lengthens the number.
void Increment(Digits& digits) {
  for (auto digit = digits.text.rbegin(); digit != digits.text.rend(); ++digit) {
    if (*digit != '9') {
      ++*digit;
      return;
    }
    *digit = '0';
  }
  digits.text.insert(digits.text.begin(), '1');
  ++digits.whole;
}

}  // namespace

std::string FixedDecimal(double number, std::size_t decimals) {
  if (!std::isfinite(number)) return std::isnan(number) ? "nan" : "inf";

  Digits digits = DigitsOf(number);
  if (digits.whole < 0) {  // leading zeros, so that the point stands before the first digit
    digits.text.insert(0, static_cast<std::size_t>(-digits.whole), '0');
    digits.whole = 0;
  }
  const std::size_t kept = static_cast<std::size_t>(digits.whole) + decimals;
  const bool rounds_up = kept < digits.text.size() && digits.text[kept] >= '5';
  digits.text.resize(kept, '0');
  if (rounds_up) Increment(digits);

  const auto whole = static_cast<std::size_t>(digits.whole);
  std::string text = whole == 0 ? "0" : digits.text.substr(0, whole);
  if (decimals > 0) text.append(1, '.').append(digits.text, whole);
  return text;
}

}  // namespace mirelo::spreadsheet
