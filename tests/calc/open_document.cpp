#include "calc/open_document.h"

#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include "adapters/calc/objects/office_text.h"

namespace mirelo::testing {

using calc::As;
using calc::OfficeText;
using calc::Reference;
using calc::TextOf;

Reference<css::sheet::XSpreadsheet> OpenDocument::Tab(std::string_view name) const {
  return As<css::sheet::XSpreadsheet>(document->getSheets()->getByName(OfficeText(name)));
}

void OpenDocument::Type(std::string_view address, double number) const {
  Tab()->getCellRangeByName(OfficeText(address))->getCellByPosition(0, 0)->setValue(number);
}

double OpenDocument::Typed(std::string_view address) const {
  return Tab()->getCellRangeByName(OfficeText(address))->getCellByPosition(0, 0)->getValue();
}

Reference<css::document::XUndoManager> OpenDocument::UndoManager() const {
  return As<css::document::XUndoManagerSupplier>(document)->getUndoManager();
}

std::string OpenDocument::StepTitles() const {
  std::string titles;
  for (const rtl::OUString& title : UndoManager()->getAllUndoActionTitles()) titles += TextOf(title) + "; ";
  return titles;
}

Reference<css::sheet::XSpreadsheetView> OpenDocument::View() const {
  return As<css::sheet::XSpreadsheetView>(As<css::frame::XModel>(document)->getCurrentController());
}

std::string OpenDocument::TabInFront() const {
  return TextOf(As<css::container::XNamed>(View()->getActiveSheet())->getName());
}

void OpenDocument::Protect(std::string_view name) const {
  As<css::util::XProtectable>(Tab(name))->protect("secret");
}

void OpenDocument::CloseDocument() const { As<css::util::XCloseable>(document)->close(true); }

}  // namespace mirelo::testing
