#include "app/output/quote_output.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <variant>

#include "adapters/csv/csv_text.h"
#include "automation/visible_text.h"
#include "automation/whole_number.h"

namespace mirelo::app {

namespace {

using Json = nlohmann::ordered_json;

Json OfNumber(double number) {
  if (const auto whole = WholeNumber(number)) return *whole;
  return number;
}

struct JsonOf {
  Json operator()(std::monostate) const { return nullptr; }
  Json operator()(std::int64_t number) const { return number; }
  Json operator()(double number) const { return OfNumber(number); }
  Json operator()(const std::string& text) const { return text; }
};

std::string LineOf(const Json& record) {
  return VisibleJson(record.dump(-1, ' ', false, Json::error_handler_t::replace)) + '\n';
}

}  // namespace

terminal::ShownText CsvLine(const std::vector<std::string>& fields) {
  std::string line;
  for (const auto& field : fields) {
    if (&field != &fields.front()) line += ',';
    line += csv::Quoted(Escaped(field));
  }
  return terminal::Lines(line + '\n');
}

terminal::ShownText JsonLine(const std::vector<std::string>& columns, const day::QuoteRow& row) {
  Json record;
  for (std::size_t c = 0; c < columns.size(); ++c) {
    auto& value = record[columns[c]];
    if (row[c].kind() == day::QuoteValue::Kind::Number) {
      value = OfNumber(row[c].ToNumber());
    } else if (!row[c].IsNothing()) {
      value = row[c].ToText();
    }
  }
  return terminal::Lines(LineOf(record));
}

std::string JsonText(const std::vector<host::DataColumn>& columns, const host::DataRow& row) {
  Json record;
  for (std::size_t c = 0; c < columns.size(); ++c) record[columns[c].name] = std::visit(JsonOf(), row[c]);
  return LineOf(record);
}

}  // namespace mirelo::app
