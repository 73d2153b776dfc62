#include "automation/number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "automation/runtime_error.h"

namespace mirelo {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

int DigitValue(char c) {
  if (IsDigit(c)) return c - '0';
  const char upper = Upper(c);
  return upper >= 'A' && upper <= 'F' ? upper - 'A' + 10 : 99;
}

// Whether a number that is out of a double's range is too large rather than too small: where its first
// significant digit stands, seen from the point and moved by the exponent, decides.
bool IsTooLarge(std::string_view number) {
  const std::size_t mark = std::min(number.find('E'), number.size());
  const std::string_view digits = number.substr(0, mark);
  std::string_view exponent_text = number.substr(std::min(mark + 1, number.size()));
  if (exponent_text.starts_with('+')) exponent_text.remove_prefix(1);

  const auto point = static_cast<std::int64_t>(std::min(digits.find('.'), digits.size()));
  const auto first = static_cast<std::int64_t>(std::min(digits.find_first_of("123456789"), digits.size()));
  std::int64_t exponent = 0;
  const char* end = exponent_text.data() + exponent_text.size();
  if (std::from_chars(exponent_text.data(), end, exponent).ec == std::errc::result_out_of_range) {
    return !exponent_text.starts_with('-');
  }
  return exponent > first - point;
}

// The number that `text` is as a whole, in the form that std::from_chars knows: digits, "." and "E" with a
// signed exponent. Too large ones are infinite, too small ones 0.
double Decimal(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc::result_out_of_range) return value;
  return IsTooLarge(text) ? std::numeric_limits<double>::infinity() : 0;
}

// Reads the digits behind &H (base 16) or &O (base 8) from the front of `text`, which it moves on. Up to 16
// bits are a 16-bit integer and up to 32 bits a 32-bit one, so that their high bit is a sign; a trailing &
// asks for 32 bits.
std::optional<double> TakeRadixDigits(std::string_view& text, int base) {
  double value = 0;
  std::size_t count = 0;
  while (count < text.size() && DigitValue(text[count]) < base)
    value = value * base + DigitValue(text[count++]);
  if (count == 0) return std::nullopt;
  text.remove_prefix(count);
  const bool wide = text.starts_with('&');
  if (wide) text.remove_prefix(1);
  if (value <= 0xFFFF && !wide) return static_cast<std::int16_t>(static_cast<std::uint16_t>(value));
  if (value <= 0xFFFFFFFF) return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
  return value;
}

// 16 or 8 when the text starts with &H or &O, else 0.
int RadixOf(std::string_view text) {
  if (text.size() < 2 || text[0] != '&') return 0;
  return Upper(text[1]) == 'H' ? 16 : Upper(text[1]) == 'O' ? 8 : 0;
}

std::size_t CountDigits(std::string_view text, std::size_t from) {
  std::size_t end = from;
  while (end < text.size() && IsDigit(text[end])) ++end;
  return end - from;
}

// Length of an exponent (letter, sign, digits) at `from`; 0 when there is none.
std::size_t ExponentLength(std::string_view text, std::size_t from) {
  if (from >= text.size() || (Upper(text[from]) != 'E' && Upper(text[from]) != 'D')) return 0;
  std::size_t digits = from + 1;
  if (digits < text.size() && (text[digits] == '+' || text[digits] == '-')) ++digits;
  const std::size_t count = CountDigits(text, digits);
  return count == 0 ? 0 : digits + count - from;
}

// The usual number is a count: digits alone, of which a double holds this many exactly.
std::optional<double> Count(std::string_view text) {
  constexpr std::size_t kMostExactDigits = 15;
  if (text.empty() || text.size() > kMostExactDigits) return std::nullopt;
  std::int64_t count = 0;
  for (const char c : text) {
    if (!IsDigit(c)) return std::nullopt;
    count = count * 10 + (c - '0');
  }
  return static_cast<double>(count);
}

// Appends an exponent in the form that std::from_chars knows.
void AppendExponent(std::string& plain, std::string_view exponent) {
  if (exponent.empty()) return;
  plain += 'E';
  plain += exponent.substr(1);
}

bool IsSign(char c) { return c == '+' || c == '-'; }

// The part of a number between the blanks and signs of both ends, and the signs in their order.
struct Signed {
  std::string_view number;
  std::string signs;
};

Signed TakeSigns(std::string_view text) {
  Signed result;
  for (; !text.empty() && (IsBlank(text.front()) || IsSign(text.front())); text.remove_prefix(1)) {
    if (IsSign(text.front())) result.signs += text.front();
  }
  for (; !text.empty() && (IsBlank(text.back()) || IsSign(text.back())); text.remove_suffix(1)) {
    if (IsSign(text.back())) result.signs += text.back();
  }
  result.number = text;
  return result;
}

// The digits of a regional number without groups and with "." as the point; nothing when it is none. Group
// separators may stand anywhere behind the first digit and before the point.
std::optional<std::string> PlainDigits(std::string_view text, const RegionalFormat& regional) {
  std::string plain;
  bool digits = false;
  bool point = false;
  while (!text.empty()) {
    if (IsDigit(text.front())) {
      plain += text.front();
      digits = true;
      text.remove_prefix(1);
    } else if (!point && !regional.decimal_separator.empty() &&
               text.starts_with(regional.decimal_separator)) {
      plain += '.';
      point = true;
      text.remove_prefix(regional.decimal_separator.size());
    } else if (digits && !point && !regional.group_separator.empty() &&
               text.starts_with(regional.group_separator)) {
      text.remove_prefix(regional.group_separator.size());
    } else {
      break;
    }
  }
  if (!digits || ExponentLength(text, 0) != text.size()) return std::nullopt;
  AppendExponent(plain, text);
  return plain;
}

}  // namespace

double Val(std::string_view text) {
  std::string packed;
  std::copy_if(text.begin(), text.end(), std::back_inserter(packed),
               [](char c) { return c != ' ' && c != '\t' && c != '\n'; });
  std::string_view rest = packed;
  if (const int radix = RadixOf(rest)) {
    rest.remove_prefix(2);
    return TakeRadixDigits(rest, radix).value_or(0);
  }

  const bool minus = rest.starts_with('-');
  if (minus || rest.starts_with('+')) rest.remove_prefix(1);
  std::size_t length = CountDigits(rest, 0);
  std::size_t digits = length;
  if (length < rest.size() && rest[length] == '.') {
    const std::size_t decimals = CountDigits(rest, length + 1);
    digits += decimals;
    length += 1 + decimals;
  }
  if (digits == 0) return 0;
  std::string plain(rest.substr(0, length));
  AppendExponent(plain, rest.substr(length, ExponentLength(rest, length)));
  const double value = Decimal(plain);
  return minus ? -value : value;
}

std::optional<double> ParseNumber(std::string_view text, const RegionalFormat& regional) {
  if (const std::optional<double> count = Count(text)) return count;
  auto [number, signs] = TakeSigns(text);
  if (signs.size() > 1) return std::nullopt;
  if (const int radix = RadixOf(number)) {
    number.remove_prefix(2);
    const std::optional<double> value = TakeRadixDigits(number, radix);
    return number.empty() && signs.empty() ? value : std::nullopt;
  }
  const std::optional<std::string> plain = PlainDigits(number, regional);
  if (!plain) return std::nullopt;
  const double value = Decimal(*plain);
  if (std::isinf(value)) return std::nullopt;
  return signs == "-" ? -value : value;
}

bool IsNumeric(std::string_view text, const RegionalFormat& regional) {
  return ParseNumber(text, regional).has_value();
}

namespace {

template <class Integer>
Integer Round(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= std::numeric_limits<Integer>::min() && rounded <= std::numeric_limits<Integer>::max())) {
    throw Errors::Overflow();
  }
  return static_cast<Integer>(rounded);
}

std::int32_t Checked(std::int64_t value) {
  if (value != static_cast<std::int32_t>(value)) throw Errors::Overflow();
  return static_cast<std::int32_t>(value);
}

}  // namespace

std::int16_t RoundToInt16(double value) { return Round<std::int16_t>(value); }
std::int32_t RoundToInt32(double value) { return Round<std::int32_t>(value); }

std::int32_t AddChecked(std::int32_t a, std::int32_t b) { return Checked(std::int64_t{a} + b); }
std::int32_t MultiplyChecked(std::int32_t a, std::int32_t b) { return Checked(std::int64_t{a} * b); }

}  // namespace mirelo
