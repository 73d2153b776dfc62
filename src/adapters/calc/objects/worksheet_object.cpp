#include "adapters/calc/objects/worksheet_object.h"

#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/floating_objects.h"
#include "adapters/calc/objects/front.h"
#include "spreadsheet/area_rules.h"
#include "spreadsheet/errors.h"
#include "spreadsheet/refusals.h"
#include "spreadsheet/sheet_name.h"

namespace mirelo::calc {

using namespace spreadsheet;

WorksheetObject::RangePtr WorksheetObject::At(const Area& area, RangeObject::View view) const {
  return RangeOf({sheet_, area}, view);
}

std::string WorksheetObject::Name() {
  return sheet_->document().Ask([&] { return sheet_->Name(); });
}

void WorksheetObject::Name(std::string_view name) {
  sheet_->document().Ask([&] {
    const auto document = sheet_->document().shared_from_this();
    const std::string_view objection = NameObjection(name, [&](std::string_view wanted) {
      const auto bearer = document->Find(wanted);
      return (bearer != nullptr && bearer != sheet_) || FindChartSheet(document, wanted) != nullptr;
    });
    if (!objection.empty()) throw Refused(std::string(objection));
    sheet_->Rename(name);
  });
}

std::int32_t WorksheetObject::Index() {
  return sheet_->document().Ask([&] { return sheet_->Index(); });
}

void WorksheetObject::Select() {
  sheet_->document().Ask([&] {
    Front& front = sheet_->document().Front();
    // While the front is held nobody sees it. Charts of a hidden sheet are brought up to date so.
    if (!front.IsHeld() && sheet_->IsHidden()) throw Refusals::HiddenSheetBroughtToFront();
    front.Show(*sheet_);
  });
}

WorksheetObject::RangePtr WorksheetObject::Range(std::string_view address) { return At(AreaAt(address)); }

WorksheetObject::RangePtr WorksheetObject::Range(std::string_view first, std::string_view last) {
  return At(Around(AreaAt(first), AreaAt(last)));
}

WorksheetObject::RangePtr WorksheetObject::Range(host::excel::Range& first, host::excel::Range& last) {
  const auto* a = dynamic_cast<const RangeObject*>(&first);
  const auto* b = dynamic_cast<const RangeObject*>(&last);
  if (a == nullptr || b == nullptr || a->block().sheet != sheet_ || b->block().sheet != sheet_) {
    throw Refusals::RangesOfOtherSheets();
  }
  return At(Around(a->block().area, b->block().area));
}

WorksheetObject::RangePtr WorksheetObject::Cells() { return At(Area::Sheet()); }

WorksheetObject::RangePtr WorksheetObject::Cells(std::int32_t row, std::int32_t column) {
  return At(AreaOf(row, column, 1, 1));
}

std::shared_ptr<host::excel::Shapes> WorksheetObject::Shapes() {
  return sheet_->document().Ask([&] { return ShapesOf(sheet_); });
}

WorksheetObject::RangePtr WorksheetObject::Rows() { return At(Area::Sheet(), RangeObject::View::Rows); }
WorksheetObject::RangePtr WorksheetObject::Columns() { return At(Area::Sheet(), RangeObject::View::Columns); }

WorksheetObject::RangePtr WorksheetObject::Rows(std::string_view rows) {
  return At(RowsAt(rows), RangeObject::View::Rows);
}

WorksheetObject::RangePtr WorksheetObject::Columns(std::string_view columns) {
  return At(ColumnsAt(columns), RangeObject::View::Columns);
}

}  // namespace mirelo::calc
