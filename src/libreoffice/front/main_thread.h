#pragma once

#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>

namespace mirelo::libreoffice {

// Has `act` called on the office's main thread: at once by a caller who is there, else later. What another
// process sends comes on other threads, and the library is loaded and used on the main one alone.
void OnMainThread(const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
                  std::function<void()> act);

}  // namespace mirelo::libreoffice
