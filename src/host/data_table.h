#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace mirelo::host {

// Values as databases and other programs keep them. Days and times are texts of ISO 8601
// (automation/iso_text.h).

// Nothing, a whole number, a number, or a text (UTF-8).
using DataValue = std::variant<std::monostate, std::int64_t, double, std::string>;

// What a column holds for the most part. It is no promise: a value that came as no number is a text wherever
// it stands.
enum class DataType : std::uint8_t { Text, Integer, Real, Any };

struct DataColumn {
  std::string name;
  DataType type = DataType::Any;

  friend bool operator==(const DataColumn&, const DataColumn&) = default;
};

// A value for each column.
using DataRow = std::vector<DataValue>;

struct DataTable {
  std::string name;
  std::vector<DataColumn> columns;
  std::vector<DataRow> rows;
};

}  // namespace mirelo::host
