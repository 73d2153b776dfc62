#include "adapters/calc/objects/document_sheet.h"

#include <algorithm>
#include <com/sun/star/container/XChild.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/errors.h"
#include "adapters/calc/objects/properties.h"
#include "adapters/calc/objects/undo_aside.h"

namespace mirelo::calc {

// Of the office's descriptions, one deprecates this and no other way to it is told.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
Reference<css::drawing::XDrawPage> PageOf(const Reference<css::sheet::XSpreadsheet>& sheet) {
  return As<css::drawing::XDrawPageSupplier>(sheet)->getDrawPage();
}
#pragma GCC diagnostic pop

DocumentSheet::DocumentSheet(Document& document, const Reference<css::sheet::XSpreadsheet>& uno,
                             const Reference<css::drawing::XDrawPage>& page)
    : document_(document), page_(page) {
  Take(uno);
}

const Reference<css::sheet::XSpreadsheet>& DocumentSheet::Get() {
  if (!mark_ || MarkNow() != mark_) LookUp();
  return uno_;
}

bool DocumentSheet::IsThere() {
  try {
    Get();
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

bool DocumentSheet::Holds(const Reference<css::drawing::XShape>& shape) {
  Get();
  return As<css::container::XChild>(shape)->getParent() == page_;
}

// Address and name are answered as before by an object that has lost all its cells; its properties are
// refused.
std::optional<DocumentSheet::Mark> DocumentSheet::MarkNow() const {
  static const rtl::OUString any("IsVisible");
  try {
    properties_->getPropertyValue(any);
    return Mark{named_->getName(), addressed_->getRangeAddress()};
  } catch (const css::lang::DisposedException&) {
    throw;
  } catch (const css::uno::Exception&) {
    return std::nullopt;
  }
}

void DocumentSheet::Take(const Reference<css::sheet::XSpreadsheet>& uno) {
  uno_ = uno;
  properties_ = As<css::beans::XPropertySet>(uno);
  named_ = As<css::container::XNamed>(uno);
  addressed_ = As<css::sheet::XCellRangeAddressable>(uno);
  mark_ = MarkNow();
  name_ = TextOf(named_->getName());
}

void DocumentSheet::LookUp() {
  const auto tabs = As<css::container::XIndexAccess>(document_.uno()->getSheets());
  for (sal_Int32 i = 0; i < tabs->getCount(); ++i) {
    const auto tab = As<css::sheet::XSpreadsheet>(tabs->getByIndex(i));
    if (PageOf(tab) == page_) return Take(tab);
  }
  throw SheetGone(name_);
}

std::string DocumentSheet::Name() {
  Get();
  return name_;
}

void DocumentSheet::Rename(std::string_view name) {
  document_.CheckStructure();
  const auto named = As<css::container::XNamed>(Get());
  {
    const UndoAside aside(document_);
    named->setName(OfficeText(name));
  }
  mark_.reset();
}

std::int32_t DocumentSheet::Index() {
  Get();
  return addressed_->getRangeAddress().Sheet + 1;
}

bool DocumentSheet::IsHidden() { return !Properties(Get()).Get("IsVisible", true); }

bool DocumentSheet::IsProtected() { return As<css::util::XProtectable>(Get())->isProtected(); }

bool DocumentSheet::IsFirstWriteTo(std::int32_t first_row, std::int32_t last_row) {
  const bool is_first = first_written_ == 0 || first_row < first_written_ || last_row > last_written_;
  first_written_ = first_written_ == 0 ? first_row : std::min(first_written_, first_row);
  last_written_ = std::max(last_written_, last_row);
  return is_first;
}

}  // namespace mirelo::calc
