#include "adapters/workbook/objects/cell_search.h"

#include <cmath>
#include <cstdint>
#include <string>

#include "adapters/workbook/rules.h"
#include "spreadsheet/display/displayed_text.h"
#include "spreadsheet/search_pattern.h"

namespace mirelo::workbook {

using namespace host::excel;

namespace {

// What a person would type to get the value.
std::string TypedForm(const CellValue& value, FormatKind kind) {
  const double* number = value.IfNumber();
  if (number == nullptr || kind != FormatKind::Date) return DisplayedText(value, "General");
  return DisplayedText(value, *number == std::floor(*number) ? "m/d/yyyy" : "m/d/yyyy h:mm:ss AM/PM");
}

// Keeps the best of the places that it is shown: the first behind `after` on the way of the search, else the
// first from the way's start on.
class Search {
 public:
  Search(CellPlace after, XlSearchOrder order, XlSearchDirection direction)
      : by_rows_(order == xlByRows), is_backward_(direction == xlPrevious), after_(StepOf(after)) {}

  // How far along the way a place lies.
  std::int64_t StepOf(CellPlace place) const {
    const std::int64_t step = by_rows_ ? std::int64_t{place.row} * kColumns + place.column
                                       : std::int64_t{place.column} * kRows + place.row;
    return is_backward_ ? -step : step;
  }

  bool IsBetter(CellPlace place) const {
    if (!best_) return true;
    const std::int64_t step = StepOf(place);
    const bool is_behind = step > after_;
    const bool best_is_behind = StepOf(*best_) > after_;
    return is_behind != best_is_behind ? is_behind : step < StepOf(*best_);
  }
  void Keep(CellPlace place) { best_ = place; }
  const std::optional<CellPlace>& best() const { return best_; }

 private:
  bool by_rows_;
  bool is_backward_;
  std::int64_t after_;
  std::optional<CellPlace> best_;
};

}  // namespace

std::optional<CellPlace> FindCell(const CellBlock& block, std::string_view what, CellPlace after,
                                  XlSearchOrder order, XlSearchDirection direction) {
  const SearchPattern pattern(what);
  Search search(after, order, direction);
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
