#include "app/quote_output.h"

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
      value = row[c].ToNumber();
    } else if (!row[c].IsNothing()) {
      value = row[c].ToText();
    }
  }
  const auto json = record.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  return terminal::Lines(VisibleJson(json) + '\n');
}

}  // namespace mirelo::app
