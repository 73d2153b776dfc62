#include "adapters/calc/objects/front.h"

#include <algorithm>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/frame/XModel2.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <utility>

#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/errors.h"

namespace mirelo::calc {

using spreadsheet::Area;

namespace {

constexpr sal_Int32 kPartsOfTheWhole = 3;

void SelectIn(const Reference<css::sheet::XSpreadsheetView>& view, const Any& selected) {
  As<css::view::XSelectionSupplier>(view)->select(selected);
}

// All drawings that are selected in a window, those in groups included.
void AddDrawings(const Reference<css::container::XIndexAccess>& group,
                 std::vector<Reference<css::drawing::XShape>>& drawings) {
  for (sal_Int32 i = 0; group.is() && i < group->getCount(); ++i) {
    const auto shape = IfAs<css::drawing::XShape>(group->getByIndex(i));
    if (!shape.is()) continue;
    drawings.push_back(shape);
    AddDrawings(IfAs<css::container::XIndexAccess>(shape), drawings);
  }
}

std::vector<Reference<css::drawing::XShape>> DrawingsIn(const Reference<css::sheet::XSpreadsheetView>& view) {
  std::vector<Reference<css::drawing::XShape>> selected;
  AddDrawings(IfAs<css::container::XIndexAccess>(As<css::view::XSelectionSupplier>(view)->getSelection()),
              selected);
  return selected;
}

// The cell that typing goes to while a drawing is selected. Calc tells it only in the text that it keeps of a
// window: three parts of the whole, and one for each sheet, which begins with column and row.
Area CursorIn(const Reference<css::sheet::XSpreadsheetView>& view, std::int32_t sheet) {
  rtl::OUString kept;
  As<css::frame::XController>(view)->getViewData() >>= kept;
  const rtl::OUString cursor = kept.getToken(kPartsOfTheWhole + sheet - 1, ';').replace('+', '/');
  const std::int32_t column = cursor.getToken(0, '/').toInt32() + 1;
  const std::int32_t row = cursor.getToken(1, '/').toInt32() + 1;
  return Area::Cell(row, column);
}

}  // namespace

Reference<css::sheet::XSpreadsheetView> Front::View() const {
  return IfAs<css::sheet::XSpreadsheetView>(document_.Model()->getCurrentController());
}

void Front::Hold() {
  if (held_) return;
  DocumentSheet& shown = Shown();
  held_ = Held{&shown, &shown, {}};
}

void Front::LetGo() {
  if (!held_) return;
  const Held held = *std::exchange(held_, std::nullopt);
  if (!held.sheet->IsThere() || held.sheet->IsHidden()) return;
  if (held.sheet != held.at_first) Show(*held.sheet);
  const auto selected = held.selections.find(held.sheet);
  if (selected == held.selections.end() || &Shown() != held.sheet) return;
  const auto& [cells, shape] = selected->second;
  if (shape.is()) return Select(*held.sheet, shape);
  if (const Selection now = ShownSelection(); now.shape.is() || now.cells != cells)
    Select(CellBlock{document_.SheetOf(held.sheet->Get()), cells});
}

std::shared_ptr<DocumentSheet> Front::Sheet() {
  return document_.SheetOf((held_ ? *held_->sheet : Shown()).Get());
}

void Front::Show(DocumentSheet& sheet) {
  chart_ = nullptr;
  if (held_) {
    held_->sheet = &sheet;
    return;
  }
  if (const auto view = View(); view.is()) view->setActiveSheet(sheet.Get());
}

std::shared_ptr<host::excel::Sheet> Front::ChartSheet() {
  if (chart_ != nullptr && !held_ && &Shown() != below_chart_) chart_ = nullptr;
  return chart_ != nullptr ? chart_() : nullptr;
}

void Front::ShowChartSheet(std::function<std::shared_ptr<host::excel::Sheet>()> chart) {
  below_chart_ = held_ ? held_->sheet : &Shown();
  chart_ = std::move(chart);
}

Area Front::SelectedCells() { return Selected().cells; }
Reference<css::drawing::XShape> Front::SelectedShape() { return Selected().shape; }

void Front::Select(const CellBlock& cells) {
  if (held_) {
    held_->selections[cells.sheet.get()] = {cells.area, {}};
    return;
  }
  if (const auto view = View(); view.is()) SelectIn(view, Any(cells.Cells()));
}

void Front::Select(DocumentSheet& sheet, const Reference<css::drawing::XShape>& shape) {
  Show(sheet);
  if (held_) {
    held_->selections[&sheet].shape = shape;
    return;
  }
  if (const auto view = View(); view.is()) SelectIn(view, Any(shape));
}

void Front::Forget(const Reference<css::drawing::XShape>& shape) {
  // The office does not outlive the loss of a drawing that is selected, in whichever window.
  for (const auto& view : Views()) {
    const auto selected = DrawingsIn(view);
    if (std::ranges::find(selected, shape) != selected.end()) SelectIn(view, Any());
  }
  if (!held_) return;
  for (auto& [sheet, selection] : held_->selections) {
    if (selection.shape == shape) selection.shape.clear();
  }
}

Front::Selection Front::Selected() {
  if (!held_) return ShownSelection();
  const auto selected = held_->selections.find(held_->sheet);
  if (selected != held_->selections.end()) return selected->second;
  return held_->sheet == &Shown() ? ShownSelection() : Selection();
}

DocumentSheet& Front::Shown() const {
  if (const auto view = View(); view.is()) return *document_.SheetOf(view->getActiveSheet());
  return *document_.Sheets().front();
}

Front::Selection Front::ShownSelection() const {
  const auto view = View();
  return view.is() ? SelectionIn(view) : Selection();
}

std::vector<Reference<css::sheet::XSpreadsheetView>> Front::Views() const {
  std::vector<Reference<css::sheet::XSpreadsheetView>> views;
  const auto controllers = As<css::frame::XModel2>(document_.Model())->getControllers();
  while (controllers->hasMoreElements()) {
    if (const auto view = IfAs<css::sheet::XSpreadsheetView>(controllers->nextElement()); view.is())
      views.push_back(view);
  }
  return views;
}

Front::Selection Front::SelectionIn(const Reference<css::sheet::XSpreadsheetView>& view) const {
  const Any selected = As<css::view::XSelectionSupplier>(view)->getSelection();
  if (const auto shapes = IfAs<css::container::XIndexAccess>(selected);
      shapes.is() && shapes->getCount() > 0) {
    if (const auto shape = IfAs<css::drawing::XShape>(shapes->getByIndex(0)); shape.is())
      return {CursorIn(view, document_.SheetOf(view->getActiveSheet())->Index()), shape};
  }
  const auto cells = IfAs<css::sheet::XCellRangeAddressable>(selected);
  if (!cells.is()) return {};
  const auto address = cells->getRangeAddress();
  return {{address.StartRow + 1, address.StartColumn + 1, address.EndRow + 1, address.EndColumn + 1}, {}};
}

}  // namespace mirelo::calc
