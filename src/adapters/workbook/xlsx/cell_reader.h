#pragma once

#include <cstddef>
#include <cstdint>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "adapters/workbook/xlsx/sheet_reader.h"

namespace mirelo::workbook {

// Reads the values of a sheet's cells.
class CellReader {
 public:
  CellReader(SheetContext& context, std::string part, Sheet& sheet);

  // The element "c" of a cell of this type and style.
  void Read(pugi::xml_node node, std::string_view type, std::int32_t row, std::int32_t column, StyleId style);

  // Tells of formulas, formats within texts and errors that the cells read so far have lost.
  void ReportLosses() const;

 private:
  CellValue FormulaValue(pugi::xml_node node, std::string_view type, StyleId style);
  CellValue ValueOf(pugi::xml_node node, std::string_view type, StyleId style);
  CellValue NumberValue(std::string_view text, StyleId style) const;
  CellValue DateValue(std::string_view text) const;
  CellValue ErrorValue(std::string_view text);
  CellValue SharedText(std::string_view index);
  CellValue TextValue(std::string text);
  RuntimeError DamagedCell(std::string_view what) const;

  SheetContext& context_;
  std::string part_;
  Sheet& sheet_;
  std::int32_t row_ = 0;  // of the cell being read
  std::int32_t column_ = 0;
  std::string buffer_;  // for content in several pieces
  std::size_t formulas_ = 0;
  std::size_t formulas_without_value_ = 0;
  std::size_t rich_texts_ = 0;
  std::size_t unknown_errors_ = 0;
};

}  // namespace mirelo::workbook
