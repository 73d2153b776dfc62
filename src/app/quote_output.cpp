#include "app/quote_output.h"

#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>

#include "automation/visible_text.h"

namespace mirelo::app {

namespace {

std::string CsvField(const std::string& field) {
  if (field.find_first_of(",\"") == std::string::npos) return field;
  std::string quoted = "\"";
  for (const char c : field) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + '"';
}

// Beyond these not every whole number is one of a double.
constexpr double kMostWhole = 9'007'199'254'740'992;

bool IsWhole(double number) { return std::trunc(number) == number && std::abs(number) <= kMostWhole; }

}  // namespace

terminal::ShownText CsvLine(const std::vector<std::string>& fields) {
  std::string line;
  for (const auto& field : fields) {
    if (&field != &fields.front()) line += ',';
    line += CsvField(Escaped(field));
  }
  return terminal::Lines(line + '\n');
}

terminal::ShownText JsonLine(const std::vector<std::string>& columns, const day::QuoteRow& row) {
  nlohmann::ordered_json record;
  for (std::size_t c = 0; c < columns.size(); ++c) {
    auto& value = record[columns[c]];
    if (row[c].kind() == day::QuoteValue::Kind::Number) {
      const double number = row[c].ToNumber();
      if (IsWhole(number)) {
        value = static_cast<std::int64_t>(number);
      } else {
        value = number;
      }
    } else if (!row[c].IsNothing()) {
      value = row[c].ToText();
    }
  }
  const auto json = record.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  return terminal::Lines(VisibleJson(json) + '\n');
}

}  // namespace mirelo::app
