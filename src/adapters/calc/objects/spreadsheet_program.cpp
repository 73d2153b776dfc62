#include "adapters/calc/objects/spreadsheet_program.h"

#include <utility>

#include "adapters/calc/objects/application_object.h"
#include "adapters/calc/objects/document.h"

namespace mirelo::calc {

std::shared_ptr<host::excel::Application> ApplicationOf(
    const Reference<css::uno::XComponentContext>& context,
    const Reference<css::sheet::XSpreadsheetDocument>& document, std::function<void()> gone) {
  try {
    return std::make_shared<ApplicationObject>(Document::Of(context, document, std::move(gone)));
  } catch (const css::lang::DisposedException&) {
    throw DocumentGone();
  } catch (const css::uno::Exception& failure) {
    throw Failed(failure);
  }
}

}  // namespace mirelo::calc
