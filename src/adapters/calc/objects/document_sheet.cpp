#include "adapters/calc/objects/document_sheet.h"

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
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
    : document_(document),
      page_(page),
      uno_(uno),
      properties_(As<css::beans::XPropertySet>(uno)),
      mark_(Mark()),
      name_(TextOf(As<css::container::XNamed>(uno)->getName())) {}

const Reference<css::sheet::XSpreadsheet>& DocumentSheet::Get() {
  if (Mark() != mark_ || mark_.empty()) LookUp();
  return uno_;
}

std::string DocumentSheet::Mark() const {
  try {
    rtl::OUString mark;
    properties_->getPropertyValue("AbsoluteName") >>= mark;
    return TextOf(mark);
  } catch (const css::lang::DisposedException&) {
    throw;
  } catch (const css::uno::Exception&) {  // all its rows were taken out at once
    return "";
  }
}

void DocumentSheet::LookUp() {
  const auto tabs = As<css::container::XIndexAccess>(document_.uno()->getSheets());
  for (sal_Int32 i = 0; i < tabs->getCount(); ++i) {
    const auto tab = As<css::sheet::XSpreadsheet>(tabs->getByIndex(i));
    if (PageOf(tab) != page_) continue;
    uno_ = tab;
    properties_ = As<css::beans::XPropertySet>(tab);
    mark_ = Mark();
    name_ = TextOf(As<css::container::XNamed>(tab)->getName());
    return;
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
    const UndoAside aside(document_.Steps());
    named->setName(OfficeText(name));
  }
  mark_.clear();
}

std::int32_t DocumentSheet::Index() {
  return As<css::sheet::XCellRangeAddressable>(Get())->getRangeAddress().Sheet + 1;
}

bool DocumentSheet::IsHidden() { return !Properties(Get()).Get("IsVisible", true); }

bool DocumentSheet::IsProtected() { return As<css::util::XProtectable>(Get())->isProtected(); }

}  // namespace mirelo::calc
