#include "adapters/calc/objects/column_widths.h"

#include <algorithm>
#include <cmath>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/table/XTableColumns.hpp>
#include <cstdint>

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

bool HasContents(const CellBlock& column) {
  const auto filled = As<css::sheet::XCellRangesQuery>(column.Cells())
                          ->queryContentCells(static_cast<sal_Int16>(flags::VALUE | flags::DATETIME |
                                                                     flags::STRING | flags::FORMULA));
  return filled->getRangeAddresses().hasElements();
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
  const auto columns = ColumnsOf(block.At(*used));
  for (sal_Int32 i = 0; i < columns->getCount(); ++i) {
    const std::int32_t column = used->first_column + i;
    if (!HasContents(block.At({1, column, kRows, column}))) continue;
    block.document().StayAside();
    Properties(columns->getByIndex(i)).Set("OptimalWidth", true);
  }
}

}  // namespace mirelo::calc
