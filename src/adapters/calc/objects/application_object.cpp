#include "adapters/calc/objects/application_object.h"

#include "adapters/calc/objects/floating_objects.h"
#include "adapters/calc/objects/front.h"
#include "adapters/calc/objects/range_object.h"
#include "adapters/calc/objects/window_object.h"
#include "adapters/calc/objects/workbook_object.h"
#include "adapters/calc/objects/worksheet_object.h"
#include "adapters/calc/objects/worksheets_object.h"
#include "spreadsheet/refusals.h"

namespace mirelo::calc {

namespace excel = host::excel;
using spreadsheet::Area;

std::shared_ptr<excel::Workbook> ApplicationObject::ActiveWorkbook() {
  return std::make_shared<WorkbookObject>(document_);
}

std::shared_ptr<excel::Sheet> ApplicationObject::ActiveSheet() { return ActiveWorkbook()->ActiveSheet(); }

std::shared_ptr<excel::Range> ApplicationObject::ActiveCell() {
  return document_->Ask([&]() -> std::shared_ptr<excel::Range> {
    Front& front = document_->Front();
    if (front.ChartSheet() != nullptr) return nullptr;
    const Area cells = front.SelectedCells();
    return RangeOf({front.Sheet(), Area::Cell(cells.first_row, cells.first_column)});
  });
}

std::shared_ptr<excel::Selectable> ApplicationObject::Selection() {
  return document_->Ask([&]() -> std::shared_ptr<excel::Selectable> {
    Front& front = document_->Front();
    if (front.ChartSheet() != nullptr) return nullptr;
    if (const auto shape = front.SelectedShape(); shape.is()) {
      if (auto known = ShapeOf(front.Sheet(), shape)) return known;
    }
    return RangeOf({front.Sheet(), front.SelectedCells()});
  });
}

std::shared_ptr<excel::Window> ApplicationObject::ActiveWindow() {
  return std::make_shared<WindowObject>(document_);
}

std::shared_ptr<excel::Worksheets> ApplicationObject::Worksheets() {
  return std::make_shared<WorksheetsObject>(document_);
}

std::shared_ptr<excel::Charts> ApplicationObject::Charts() { return ActiveWorkbook()->Charts(); }

std::shared_ptr<excel::Range> ApplicationObject::Range(std::string_view address) {
  return FrontWorksheet()->Range(address);
}

std::shared_ptr<excel::Range> ApplicationObject::Cells() { return FrontWorksheet()->Cells(); }

std::shared_ptr<excel::Range> ApplicationObject::Cells(std::int32_t row, std::int32_t column) {
  return FrontWorksheet()->Cells(row, column);
}

bool ApplicationObject::ScreenUpdating() { return !document_->Front().IsHeld(); }

void ApplicationObject::ScreenUpdating(bool on) {
  document_->Ask([&] {
    if (on == ScreenUpdating()) return;
    if (on) return ShowAgain();
    document_->Front().Hold();
    document_->HoldScreen();
    DrawCharts(*document_, false);
  });
}

// Windows and charts go on also where what was selected cannot be shown.
void ApplicationObject::ShowAgain() {
  const auto pause = document_->LetGoOfScreen();
  try {
    document_->Front().LetGo();
  } catch (...) {
    DrawCharts(*document_, true);
    throw;
  }
  DrawCharts(*document_, true);
}

std::shared_ptr<excel::Worksheet> ApplicationObject::FrontWorksheet() const {
  return document_->Ask([&]() -> std::shared_ptr<excel::Worksheet> {
    if (document_->Front().ChartSheet() != nullptr) throw spreadsheet::Refusals::NoCellsInFront();
    return std::make_shared<WorksheetObject>(document_->Front().Sheet());
  });
}

}  // namespace mirelo::calc
