#include "adapters/workbook/objects/cell_search.h"

#include <cstdint>

#include "adapters/workbook/rules.h"
#include "spreadsheet/cell_search.h"
#include "spreadsheet/search_pattern.h"

namespace mirelo::workbook {

using namespace host::excel;

std::optional<CellPlace> FindCell(const CellBlock& block, std::string_view what, CellPlace after,
                                  XlSearchOrder order, XlSearchDirection direction) {
  const SearchPattern pattern(what);
  CellSearch search(after, order, direction);
  const auto& book = block.book;
  const auto& sheet = block.sheet;
  sheet->cells.ForEach(block.area, [&](std::int32_t row, std::int32_t column, const CellValue& value) {
    const CellPlace place{row, column};
    if (!search.IsBetter(place)) return;
    const bool matches = pattern.MatchesAnything() ||
                         pattern.Matches(TypedForm(value, book->styles.Kind(sheet->styles.At(row, column))));
    if (matches) search.Keep(place);
  });
  return search.best();
}

}  // namespace mirelo::workbook
