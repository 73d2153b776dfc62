#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "automation/number.h"

namespace mirelo {

namespace {

constexpr int kSignificantDigits = 15;
constexpr int kSmallestFixedExponent = -4;
constexpr double kAboveFixedForm = 1e15;

// A positive finite number as d.ddd times ten to the exponent: 1 to 15 digits without zeros at the end.
struct Scientific {
  std::string digits;
  int exponent = 0;
};

Scientific Dissect(double value) {
  char buffer[32];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific,
                                 kSignificantDigits - 1);
  const std::string_view text(buffer, static_cast<std::size_t>(end.ptr - buffer));  // d.dddddddddddddde+xx
  const std::size_t mark = text.find('e');

  Scientific parts;
  const char* exponent = text.data() + mark + 1;
  std::from_chars(exponent + (*exponent == '+'), text.data() + text.size(), parts.exponent);
  parts.digits = text.substr(0, mark);
  parts.digits.erase(1, 1);
  parts.digits.erase(parts.digits.find_last_not_of('0') + 1);
  return parts;
}

std::string WithPoint(std::string digits, std::size_t before_point) {
  if (digits.size() > before_point) digits.insert(before_point, 1, '.');
  return digits;
}

std::string ExponentForm(const Scientific& parts) {
  const std::string exponent = std::to_string(std::abs(parts.exponent));
  return WithPoint(parts.digits, 1) + (parts.exponent < 0 ? "E-" : "E+") + (exponent.size() < 2 ? "0" : "") +
         exponent;
}

std::string FixedForm(Scientific parts) {
  if (parts.exponent < 0) {
    return "0." + std::string(static_cast<std::size_t>(-parts.exponent - 1), '0') + parts.digits;
  }
  const auto before_point = static_cast<std::size_t>(parts.exponent) + 1;
  if (parts.digits.size() < before_point) parts.digits.resize(before_point, '0');
  return WithPoint(std::move(parts.digits), before_point);
}

// Decimal places of the fixed form of a number below 1.
int DecimalPlaces(const Scientific& parts) {
  return static_cast<int>(parts.digits.size()) - 1 - parts.exponent;
}

}  // namespace

std::string NumberText(double value) {
  if (value < 0) return NumberText(-value).insert(0, 1, '-');
  if (value == 0) return "0";
  if (std::isnan(value)) return "1.#QNAN";
  if (std::isinf(value)) return "1.#INF";
  // Most numbers are counts, and those need none of what follows.
  if (value < kAboveFixedForm && value == std::floor(value)) {
    return std::to_string(static_cast<std::int64_t>(value));
  }

  const Scientific parts = Dissect(value);
  const bool too_small = parts.exponent < kSmallestFixedExponent ||
                         (parts.exponent < 0 && DecimalPlaces(parts) > kSignificantDigits);
  const bool too_large = parts.exponent >= kSignificantDigits;
  return too_small || too_large ? ExponentForm(parts) : FixedForm(parts);
}

std::string NumberText(std::int32_t value) { return std::to_string(value); }

}  // namespace mirelo
