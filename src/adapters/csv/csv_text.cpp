#include "adapters/csv/csv_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <variant>

#include "automation/visible_text.h"

namespace mirelo::csv {

namespace {

constexpr std::string_view kBeginningsOfFormulas = "=+-@'";

// Between these a number is written without an exponent.
constexpr double kSmallest = 1e-4;
constexpr double kLargest = 1e15;

std::string TextField(std::string_view text) {
  std::string field = Escaped(text);
  if (!field.empty() && kBeginningsOfFormulas.find(field.front()) != std::string_view::npos) {
    field.insert(field.begin(), '\'');
  }
  return Quoted(field);
}

struct FieldOf {
  std::string operator()(std::monostate) const { return {}; }
  std::string operator()(std::int64_t number) const { return std::to_string(number); }
  std::string operator()(double number) const { return ExactNumberText(number); }
  std::string operator()(const std::string& text) const { return TextField(text); }
};

}  // namespace

std::string Quoted(std::string_view field) {
  if (field.find_first_of(",\"") == std::string_view::npos) return std::string(field);
  std::string quoted = "\"";
  for (const char c : field) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + '"';
}

std::string ExactNumberText(double number) {
  std::array<char, 32> text;
  const double size = std::abs(number);
  const bool is_plain = number == 0 || (size >= kSmallest && size < kLargest);
  const auto format = is_plain ? std::chars_format::fixed : std::chars_format::scientific;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number + 0.0, format).ptr;
  return {text.data(), end};
}

std::string Line(const host::DataRow& row) {
  std::string line;
  for (const host::DataValue& value : row) {
    if (&value != &row.front()) line += ',';
    line += std::visit(FieldOf(), value);
  }
  return line + '\n';
}

std::string HeaderLine(const std::vector<host::DataColumn>& columns) {
  std::string line;
  for (const host::DataColumn& column : columns) {
    if (&column != &columns.front()) line += ',';
    line += TextField(column.name);
  }
  return line + '\n';
}

}  // namespace mirelo::csv
