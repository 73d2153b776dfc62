#pragma once

#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>

namespace mirelo::libreoffice {

namespace css = com::sun::star;

// Puts the machine in place that the classes work on: the user's own settings and credentials, and the
// office's main thread as the message loop. It stays until the office ends, since macros may hold objects as
// long. Called again it does nothing.
void InstallMachine(const css::uno::Reference<css::uno::XComponentContext>& context);

}  // namespace mirelo::libreoffice
