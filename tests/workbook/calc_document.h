#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workbook/package_builder.h"

namespace mirelo::testing {

// An OpenDocument spreadsheet, as far as a comparison with the workbook it was made from needs it.
class CalcDocument {
 public:
  // The parts of an .ods file.
  explicit CalcDocument(const Parts& parts);

  struct Cell {
    std::string type;   // "float", "string", "date", "time", "percentage", "boolean"; empty for a blank
    std::string value;  // of all types but text
    std::string text;   // as shown
    bool has_formula = false;
    std::string style;  // where it tells none, its column's
    std::optional<std::string> comment;
    double comment_height = 0;  // points
  };
  // A blank cell where the document has none. Rows and columns count from 1.
  Cell At(std::string_view sheet, std::int32_t row, std::int32_t column) const;

  // A property of a cell's style, such as "fo:color"; empty when the style does not tell it.
  std::string Property(const Cell& cell, std::string_view property) const;

  // The conditions of a sheet: the cells that each reaches, its comparison, and the colour of its font.
  struct Condition {
    std::string cells;
    std::string comparison;
    std::string color;
  };
  std::vector<Condition> Conditions(std::string_view sheet) const;

  std::vector<std::string> Sheets() const;

 private:
  pugi::xml_node Style(std::string_view name) const;

  pugi::xml_document content_;
  pugi::xml_document styles_;
};

}  // namespace mirelo::testing
