#include "libreoffice/spreadsheet.h"

#include "automation/runtime_error.h"

namespace mirelo::libreoffice {

std::shared_ptr<host::excel::Application> SpreadsheetOf(
    const css::uno::Reference<css::uno::XComponentContext>&, const css::uno::Reference<css::frame::XModel>&) {
  throw RuntimeError(445, "This version does not yet work in an open document.");
}

}  // namespace mirelo::libreoffice
