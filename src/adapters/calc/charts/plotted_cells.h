#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/calc/objects/document_sheet.h"
#include "spreadsheet/area.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::calc {

// The cells of a sheet, as charts plot them. It belongs to its document.
class SheetCells final : public spreadsheet::CellSource {
 public:
  explicit SheetCells(DocumentSheet& sheet) : sheet_(sheet) {}

  DocumentSheet& sheet() const { return sheet_; }

  void ForEachNumber(
      const spreadsheet::Area& area,
      const std::function<void(std::int32_t row, std::int32_t column, double number)>& visit) const override;

 private:
  DocumentSheet& sheet_;
};

// Cells as charts of the office name them: "$'My sheet'.$B$3:$B$7", and back. Nothing for what is no such
// name: the office writes "#REF!" for cells that were deleted.
struct NamedCells {
  std::string sheet;
  spreadsheet::Area area;
};
std::string RepresentationOf(std::string_view sheet, const spreadsheet::Area& area);
std::optional<NamedCells> CellsNamed(std::string_view representation);

}  // namespace mirelo::calc
