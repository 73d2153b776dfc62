#include <charconv>
#include <cstddef>
#include <string>
#include <system_error>

#include "spreadsheet/typed/typed_text.h"

namespace mirelo::spreadsheet {

namespace {

constexpr std::size_t kGroup = 3;

constexpr bool IsNumberDigit(char c) { return '0' <= c && c <= '9'; }

// What stands around and inside the digits.
struct Form {
  bool negative = false;
  bool currency = false;
  bool percent = false;
  bool grouped = false;
  bool fraction = false;
  bool exponent = false;
};

bool Take(std::string_view& text, std::string_view what) {
  if (what.empty() || !text.starts_with(what)) return false;
  text.remove_prefix(what.size());
  return true;
}

std::string_view TakeDigits(std::string_view& text) {
  std::size_t count = 0;
  while (count < text.size() && IsNumberDigit(text[count])) ++count;
  const std::string_view digits = text.substr(0, count);
  text.remove_prefix(count);
  return digits;
}

// Takes signs, "$", parentheses and "%" off both ends. False for a combination that makes no number.
bool TakeSurroundings(std::string_view& text, Form& form) {
  if (text.size() > 2 && text.front() == '(' && text.back() == ')') {
    form.negative = true;
    text = text.substr(1, text.size() - 2);
  }
  bool has_sign = form.negative;
  for (;;) {
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
      if (has_sign) return false;
      has_sign = true;
      form.negative = text.front() == '-';
      text.remove_prefix(1);
    } else if (!form.currency && Take(text, "$")) {
      form.currency = true;
    } else {
      break;
    }
  }
  if (!text.empty() && text.back() == '%') {
    form.percent = true;
    text.remove_suffix(1);
  }
  return !(form.percent && form.currency);
}

// The digits before the decimal point, their groups checked and joined.
bool TakeWhole(std::string_view& text, const RegionalFormat& regional, Form& form, std::string& number) {
  std::string_view digits = TakeDigits(text);
  number += digits;
  while (!digits.empty() && Take(text, regional.group_separator)) {
    if (!form.grouped && digits.size() > kGroup) return false;
    form.grouped = true;
    digits = TakeDigits(text);
    if (digits.size() != kGroup) return false;
    number += digits;
  }
  return true;
}

bool TakeExponent(std::string_view& text, Form& form, std::string& number) {
  if (text.empty() || (text.front() != 'e' && text.front() != 'E')) return true;
  text.remove_prefix(1);
  form.exponent = true;
  number += 'e';
  if (Take(text, "-")) {
    number += '-';
  } else {
    Take(text, "+");
  }
  const std::string_view digits = TakeDigits(text);
  number += digits;
  return !digits.empty();
}

std::string_view FormatOf(const Form& form) {
  if (form.percent) return form.fraction ? "0.00%" : "0%";
  if (form.currency) return form.fraction ? "$#,##0.00_);[Red]($#,##0.00)" : "$#,##0_);[Red]($#,##0)";
  if (form.exponent) return "0.00E+00";
  if (form.grouped) return form.fraction ? "#,##0.00" : "#,##0";
  return {};
}

}  // namespace

std::optional<TypedValue> TypedNumber(std::string_view text, const RegionalFormat& regional) {
  Form form;
  if (!TakeSurroundings(text, form)) return std::nullopt;

  std::string number;
  if (!TakeWhole(text, regional, form, number)) return std::nullopt;
  if (Take(text, regional.decimal_separator)) {
    number += '.';
    const std::string_view fraction = TakeDigits(text);
    number += fraction;
    form.fraction = !fraction.empty();
  }
  if (number.empty() || number == "." || !TakeExponent(text, form, number) || !text.empty())
    return std::nullopt;

  double value = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  if (error != std::errc()) return std::nullopt;  // beyond the range of numbers: stays text
  if (form.percent) value /= 100;
  return TypedValue{CellValue(form.negative ? -value : value), FormatOf(form)};
}

}  // namespace mirelo::spreadsheet
