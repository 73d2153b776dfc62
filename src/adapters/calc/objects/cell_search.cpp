#include "adapters/calc/objects/cell_search.h"

#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <string>

#include "adapters/calc/objects/block_formats.h"
#include "adapters/calc/objects/used_area.h"
#include "spreadsheet/cell_search.h"
#include "spreadsheet/search_pattern.h"

namespace mirelo::calc {

using namespace spreadsheet;

namespace {

bool IsEmptyCell(const Any& value) {
  rtl::OUString text;
  return (value >>= text) && text.isEmpty();
}

std::string TypedFormOf(const Any& value, const NumberFormats::Format& format, const CellBlock& cell) {
  if (rtl::OUString text; value >>= text) return TextOf(text);
  if (double number = 0; value >>= number)
    return TypedForm(format.is_boolean ? CellValue(number != 0) : CellValue(number), format.kind);
  return TextOf(As<css::text::XTextRange>(cell.FirstCell())->getString());  // an error
}

}  // namespace

std::optional<CellPlace> FindCell(const CellBlock& block, std::string_view what, CellPlace after,
                                  host::excel::XlSearchOrder order,
                                  host::excel::XlSearchDirection direction) {
  const auto used = Shared(block.area, UsedArea(*block.sheet));
  if (!used) return std::nullopt;
  const CellBlock searched = block.At(*used);
  const auto data = As<css::sheet::XCellRangeData>(searched.Cells())->getDataArray();
  BlockFormats formats(searched);
  const SearchPattern pattern(what);
  CellSearch search(after, order, direction);
  for (std::int32_t row = 0; row < used->Rows(); ++row) {
    for (std::int32_t column = 0; column < used->Columns(); ++column) {
      const Any& value = data[row][column];
      const CellPlace place{used->first_row + row, used->first_column + column};
      if (IsEmptyCell(value) || !search.IsBetter(place)) continue;
      const bool matches = pattern.MatchesAnything() ||
                           pattern.Matches(TypedFormOf(value, formats.At(place.row, place.column),
                                                       block.At(Area::Cell(place.row, place.column))));
      if (matches) search.Keep(place);
    }
  }
  return search.best();
}

}  // namespace mirelo::calc
