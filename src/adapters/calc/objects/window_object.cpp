#include "adapters/calc/objects/window_object.h"

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/sheet/XViewPane.hpp>

#include "adapters/calc/objects/front.h"
#include "adapters/calc/objects/range_object.h"
#include "spreadsheet/refusals.h"

namespace mirelo::calc {

namespace {

// As much as a window of middling size shows, where none does.
constexpr spreadsheet::Area kWithoutWindow{1, 1, 40, 20};

// The rows and columns that the window's last pane shows, from the first ones on.
spreadsheet::Area SeenIn(const Reference<css::sheet::XSpreadsheetView>& view) {
  const auto panes = IfAs<css::container::XIndexAccess>(view);
  if (!panes.is() || panes->getCount() == 0) return kWithoutWindow;
  const auto pane = As<css::sheet::XViewPane>(panes->getByIndex(panes->getCount() - 1));
  const auto seen = pane->getVisibleRange();
  return {1, 1, seen.EndRow + 1, seen.EndColumn + 1};
}

}  // namespace

std::shared_ptr<host::excel::Range> WindowObject::VisibleRange() {
  return document_->Ask([&] {
    Front& front = document_->Front();
    if (front.ChartSheet() != nullptr) throw spreadsheet::Refusals::NoCellsInFront();
    return RangeOf({front.Sheet(), SeenIn(front.View())});
  });
}

}  // namespace mirelo::calc
