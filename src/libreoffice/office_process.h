#pragma once

#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <memory>

#include "adapters/calc/office.h"

namespace mirelo::libreoffice {

namespace css = com::sun::star;

// The office that has loaded this library.
std::shared_ptr<calc::Office> OfficeOf(const css::uno::Reference<css::uno::XComponentContext>& context);

// Whether the caller is on the office's main thread.
bool IsMainThread();

}  // namespace mirelo::libreoffice
