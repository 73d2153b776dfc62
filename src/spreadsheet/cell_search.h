#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/excel/constants.h"
#include "spreadsheet/area.h"
#include "spreadsheet/cell_value.h"
#include "spreadsheet/format_code.h"

namespace mirelo::spreadsheet {

// What a person would type to get the value, which is what searches look at.
std::string TypedForm(const CellValue& value, FormatKind kind);

// Keeps the best of the places that it is shown: the first behind `after` on the way of the search, else the
// first from the way's start on.
class CellSearch {
 public:
  CellSearch(CellPlace after, host::excel::XlSearchOrder order, host::excel::XlSearchDirection direction)
      : by_rows_(order == host::excel::xlByRows),
        is_backward_(direction == host::excel::xlPrevious),
        after_(StepOf(after)) {}

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

}  // namespace mirelo::spreadsheet
