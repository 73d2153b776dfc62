#include "app/quote_output.h"

#include <nlohmann/json.hpp>

#include "automation/number.h"

namespace mirelo::app {

namespace {

std::string CsvField(const std::string& field) {
  if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
  std::string quoted = "\"";
  for (const char c : field) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + '"';
}

}  // namespace

std::string CsvLine(const std::vector<std::string>& fields) {
  std::string line;
  for (const auto& field : fields) {
    if (&field != &fields.front()) line += ',';
    line += CsvField(field);
  }
  return line + '\n';
}

std::string JsonLine(const std::vector<std::string>& columns, const std::vector<std::string>& row) {
  nlohmann::ordered_json record;
  for (std::size_t c = 0; c < columns.size(); ++c) {
    auto& value = record[columns[c]];
    if (row[c].empty()) continue;
    if (const auto number = ParseNumber(row[c])) {
      value = *number;
    } else {
      value = row[c];
    }
  }
  return record.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

}  // namespace mirelo::app
