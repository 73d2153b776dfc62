#include "adapters/calc/objects/row_heights.h"

#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/table/XTableRows.hpp>
#include <utility>

#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/undo_aside.h"

namespace mirelo::calc {

namespace {

constexpr std::string_view kFitsRows = "IsAdjustHeightEnabled";
constexpr std::string_view kIsFitted = "OptimalHeight";

Reference<css::table::XTableRows> RowsOf(const CellBlock& block) {
  return As<css::table::XColumnRowRange>(block.Cells())->getRows();
}

}  // namespace

bool HeldHeights::AreNeeded(Document& document) {
  const UndoAside* aside = document.Aside();
  return aside != nullptr && !aside->IsUndoOff();
}

HeldHeights::HeldHeights(const CellBlock& block) : block_(block) {
  if (!AreNeeded(block.document())) return;
  const Properties document(block.document().uno());
  if (!document.Get(kFitsRows, true)) return;  // a macro has it so, and fits them itself
  document.Set(kFitsRows, false);
  are_held_ = true;
}

void HeldHeights::LetGo() {
  if (!std::exchange(are_held_, false)) return;
  try {
    Properties(block_.document().uno()).Set(kFitsRows, true);
  } catch (const css::uno::Exception&) {  // the document is gone
  }
}

void HeldHeights::Fit() {
  if (!are_held_) return;
  LetGo();
  const auto rows = RowsOf(block_);
  const sal_Int32 count = rows->getCount();
  // The office makes one step for all rows that it fits at once.
  for (sal_Int32 first = 0; first < count;) {
    sal_Int32 end = first;
    while (end < count && Properties(rows->getByIndex(end)).Get(kIsFitted, true)) ++end;
    if (end > first) {
      const std::int32_t first_row = block_.area.first_row + first;
      const std::int32_t last_row = block_.area.first_row + end - 1;
      block_.document().StayAside();
      Properties(RowsOf(block_.At({first_row, 1, last_row, 1}))).Set(kIsFitted, true);
    }
    first = end + 1;
  }
  block_.document().StayAside();
}

}  // namespace mirelo::calc
