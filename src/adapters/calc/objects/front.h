#pragma once

#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "adapters/calc/objects/cell_block.h"
#include "adapters/calc/objects/interfaces.h"
#include "host/excel/sheet.h"

namespace mirelo::calc {

class Document;
class DocumentSheet;

// Which sheet is in front in a document's window, and what is selected there. Between Hold and LetGo, while
// ScreenUpdating is off, clients show and select without moving what the person sees. LetGo then brings the
// sheet that they showed last to the front, if it is another than at Hold, with what they selected on it; a
// sheet that is hidden or gone by then is not shown.
//
// Calc has no chart sheets. One that is in front here covers the sheet that the person sees, until they or
// somebody else turn to another.
class Front {
 public:
  // `document` outlives it.
  explicit Front(Document& document) : document_(document) {}

  bool IsHeld() const { return held_.has_value(); }
  void Hold();
  void LetGo();

  std::shared_ptr<DocumentSheet> Sheet();
  void Show(DocumentSheet& sheet);

  // Null while a sheet of cells is in front.
  std::shared_ptr<host::excel::Sheet> ChartSheet();
  // `chart` makes the object of the chart sheet, which holds its document and so is not kept here.
  void ShowChartSheet(std::function<std::shared_ptr<host::excel::Sheet>()> chart);

  // Of the sheet in front. `cells` must lie on it.
  spreadsheet::Area SelectedCells();
  void Select(const CellBlock& cells);
  // Null where cells are selected.
  Reference<css::drawing::XShape> SelectedShape();
  void Select(DocumentSheet& sheet, const Reference<css::drawing::XShape>& shape);
  // To be called before a shape is taken off its sheet: wherever it is selected, it is so no longer.
  void Forget(const Reference<css::drawing::XShape>& shape);

  // Null where the document is not shown as a spreadsheet: in its print preview, or without a window.
  Reference<css::sheet::XSpreadsheetView> View() const;

 private:
  struct Selection {
    spreadsheet::Area cells = spreadsheet::Area::Cell(1, 1);
    Reference<css::drawing::XShape> shape;
  };
  // What is in front while it is held.
  struct Held {
    DocumentSheet* at_first;
    DocumentSheet* sheet;
    std::map<DocumentSheet*, Selection> selections;  // of sheets where anything was selected meanwhile
  };

  DocumentSheet& Shown() const;
  Selection ShownSelection() const;
  // Of all windows of the document.
  std::vector<Reference<css::sheet::XSpreadsheetView>> Views() const;
  Selection SelectionIn(const Reference<css::sheet::XSpreadsheetView>& view) const;
  Selection Selected();

  Document& document_;
  std::optional<Held> held_;
  std::function<std::shared_ptr<host::excel::Sheet>()> chart_;
  DocumentSheet* below_chart_ = nullptr;
};

}  // namespace mirelo::calc
