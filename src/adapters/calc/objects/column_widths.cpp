#include "adapters/calc/objects/column_widths.h"

#include <algorithm>
#include <cmath>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/table/XTableColumns.hpp>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/used_area.h"
#include "spreadsheet/column_digits.h"

namespace mirelo::calc {

using namespace spreadsheet;
namespace flags = css::sheet::CellFlags;

namespace {

constexpr double kHundredthsOfMillimetresPerPixel = 2540.0 / 96;

Reference<css::table::XTableColumns> ColumnsOf(const CellBlock& block) {
  return As<css::table::XColumnRowRange>(block.Cells())->getColumns();
}

double DigitsOf(const Properties& column) {
  if (!column.Get("IsVisible", true)) return 0;
  const double pixels = column.Get("Width", sal_Int32{0}) / kHundredthsOfMillimetresPerPixel;
  return DigitsOfPixels(static_cast<std::int32_t>(std::lround(pixels)));
}

// Whether there is anything in a column of a block, for each of them.
std::vector<bool> HaveContents(const CellBlock& block) {
  const auto filled = As<css::sheet::XCellRangesQuery>(block.Cells())
                          ->queryContentCells(static_cast<sal_Int16>(flags::VALUE | flags::DATETIME |
                                                                     flags::STRING | flags::FORMULA));
  std::vector<bool> have(static_cast<std::size_t>(block.area.Columns()));
  for (const auto& range : filled->getRangeAddresses()) {
    const auto first = have.begin() + (range.StartColumn + 1 - block.area.first_column);
    std::fill(first, first + (range.EndColumn - range.StartColumn + 1), true);
  }
  return have;
}

// Those with something in them, but for hidden ones, which the office would show again.
std::vector<bool> AreToBeFitted(const CellBlock& block) {
  std::vector<bool> are = HaveContents(block);
  const auto columns = ColumnsOf(block);
  for (sal_Int32 i = 0; i < columns->getCount(); ++i) {
    const auto number = static_cast<std::size_t>(i);
    if (are[number]) are[number] = Properties(columns->getByIndex(i)).Get("IsVisible", true);
  }
  return are;
}

}  // namespace

Variant DigitsOfColumns(const CellBlock& block) {
  const auto columns = ColumnsOf(block);
  const double first = DigitsOf(Properties(columns->getByIndex(0)));
  for (sal_Int32 i = 1; i < columns->getCount(); ++i) {
    if (DigitsOf(Properties(columns->getByIndex(i))) != first) return {};
  }
  return first;
}

void SetDigitsOfColumns(const CellBlock& block, double digits) {
  const Properties columns(ColumnsOf(block));
  columns.Set("IsVisible", digits > 0);
  block.document().StayAside();
  if (digits > 0)
    columns.Set("Width", static_cast<sal_Int32>(
                             std::lround(PixelsOfDigits(digits) * kHundredthsOfMillimetresPerPixel)));
}

void FitColumns(const CellBlock& block) {
  const auto used = Shared(block.area, {1, 1, kRows, UsedArea(*block.sheet).last_column});
  if (!used) return;
  const std::vector<bool> are_fitted =
      AreToBeFitted(block.At({1, used->first_column, kRows, used->last_column}));
  for (auto first = are_fitted.begin(); first != are_fitted.end();) {
    const auto end = std::find(first, are_fitted.end(), !*first);
    const auto column = used->first_column + static_cast<std::int32_t>(first - are_fitted.begin());
    const auto count = static_cast<std::int32_t>(end - first);
    if (*first) {
      block.document().StayAside();
      Properties(ColumnsOf(block.At({1, column, 1, column + count - 1}))).Set("OptimalWidth", true);
    }
    first = end;
  }
}

}  // namespace mirelo::calc
