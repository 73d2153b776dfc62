#include "adapters/calc/charts/plotted_cells.h"

#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <memory>

#include "adapters/calc/objects/block_formats.h"
#include "adapters/calc/objects/cell_block.h"
#include "adapters/calc/objects/document.h"
#include "spreadsheet/address.h"

namespace mirelo::calc {

using spreadsheet::Area;

namespace {

constexpr sal_Int16 kWhatHoldsNumbers =
    css::sheet::CellFlags::VALUE | css::sheet::CellFlags::DATETIME | css::sheet::CellFlags::FORMULA;

std::string WithoutDollars(std::string_view text) {
  std::string kept;
  for (const char character : text) {
    if (character != '$') kept += character;
  }
  return kept;
}

// The name between apostrophes, each of its own being there twice.
std::string Unquoted(std::string_view quoted) {
  if (quoted.size() < 2 || quoted.front() != '\'' || quoted.back() != '\'') return std::string(quoted);
  std::string name;
  for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
    name += quoted[i];
    if (quoted[i] == '\'') ++i;
  }
  return name;
}

}  // namespace

void SheetCells::ForEachNumber(
    const Area& area,
    const std::function<void(std::int32_t row, std::int32_t column, double number)>& visit) const {
  Document& document = sheet_.document();
  document.Ask([&] {
    const std::shared_ptr<DocumentSheet> sheet = document.SheetOf(sheet_.Get());
    const auto filled = As<css::sheet::XCellRangesQuery>(CellBlock{sheet, area}.Cells())
                            ->queryContentCells(kWhatHoldsNumbers);
    for (const css::table::CellRangeAddress& part : filled->getRangeAddresses()) {
      const CellBlock block{sheet,
                            {part.StartRow + 1, part.StartColumn + 1, part.EndRow + 1, part.EndColumn + 1}};
      const auto rows = As<css::sheet::XCellRangeData>(block.Cells())->getDataArray();
      BlockFormats formats(block);
      for (sal_Int32 r = 0; r < rows.getLength(); ++r) {
        for (sal_Int32 c = 0; c < rows[r].getLength(); ++c) {
          double number = 0;
          const std::int32_t row = block.area.first_row + r;
          const std::int32_t column = block.area.first_column + c;
          if ((rows[r][c] >>= number) && !formats.At(row, column).is_boolean) visit(row, column, number);
        }
      }
    }
  });
}

std::string RepresentationOf(std::string_view sheet, const Area& area) {
  std::string name = "$'";
  for (const char character : sheet) {
    name += character;
    if (character == '\'') name += character;
  }
  const auto cell = [](std::int32_t row, std::int32_t column) {
    return "$" + spreadsheet::ColumnName(column) + "$" + std::to_string(row);
  };
  return name + "'." + cell(area.first_row, area.first_column) + ":" + cell(area.last_row, area.last_column);
}

std::optional<NamedCells> CellsNamed(std::string_view representation) {
  const std::size_t dot = representation.rfind("'.") != std::string_view::npos
                              ? representation.rfind("'.") + 1
                              : representation.find('.');
  if (dot == std::string_view::npos) return std::nullopt;
  std::string_view sheet = representation.substr(0, dot);
  if (!sheet.empty() && sheet.front() == '$') sheet.remove_prefix(1);
  const auto area = spreadsheet::ParseAddress(WithoutDollars(representation.substr(dot + 1)));
  if (sheet.empty() || !area) return std::nullopt;
  return NamedCells{Unquoted(sheet), *area};
}

}  // namespace mirelo::calc
