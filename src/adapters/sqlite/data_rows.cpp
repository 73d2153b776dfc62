#include "adapters/sqlite/data_rows.h"

#include <cstdint>
#include <variant>

namespace mirelo::sqlite {

namespace {

std::string_view TypeName(host::DataType type) {
  switch (type) {
    case host::DataType::Text:
      return " TEXT";
    case host::DataType::Integer:
      return " INTEGER";
    case host::DataType::Real:
      return " REAL";
    case host::DataType::Any:
      break;
  }
  return "";
}

struct BindValue {
  Run& run;

  void operator()(std::monostate) const { run.BindNull(); }
  void operator()(std::int64_t number) const { run.Bind(number); }
  void operator()(double number) const { run.BindReal(number); }
  void operator()(const std::string& text) const { run.BindText(text); }
};

}  // namespace

std::string QuotedName(std::string_view name) {
  std::string quoted = "\"";
  for (const char c : name) {
    if (c == '"') quoted += '"';
    if (c != '\0') quoted += c;  // which would end the statement
  }
  return quoted + '"';
}

std::string ColumnDefinition(const host::DataColumn& column) {
  return QuotedName(column.name).append(TypeName(column.type));
}

std::string CreateTable(std::string_view table, const std::vector<host::DataColumn>& columns) {
  std::string sql = "CREATE TABLE " + QuotedName(table) + " (";
  for (const host::DataColumn& column : columns) {
    sql += (&column == &columns.front() ? "" : ", ") + ColumnDefinition(column);
  }
  return sql + ")";
}

std::string InsertInto(std::string_view table, const std::vector<host::DataColumn>& columns) {
  std::string names;
  std::string values;
  for (const host::DataColumn& column : columns) {
    const char* const comma = &column == &columns.front() ? "" : ", ";
    names.append(comma).append(QuotedName(column.name));
    values.append(comma).append("?");
  }
  return "INSERT INTO " + QuotedName(table) + " (" + names + ") VALUES (" + values + ")";
}

void BindRow(Run& run, const host::DataRow& row) {
  for (const host::DataValue& value : row) std::visit(BindValue{run}, value);
}

}  // namespace mirelo::sqlite
