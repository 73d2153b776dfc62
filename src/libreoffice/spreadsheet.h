#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <memory>

namespace mirelo::host::excel {
class Application;
}

namespace mirelo::libreoffice {

namespace css = com::sun::star;

// An open spreadsheet as the classes know it.
std::shared_ptr<host::excel::Application> SpreadsheetOf(
    const css::uno::Reference<css::uno::XComponentContext>& context,
    const css::uno::Reference<css::frame::XModel>& document);

}  // namespace mirelo::libreoffice
