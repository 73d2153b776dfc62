#pragma once

#include <com/sun/star/uno/Exception.hpp>
#include <com/sun/star/uno/RuntimeException.hpp>
#include <exception>
#include <utility>

namespace mirelo::libreoffice {

// Runs the body of whatever the office calls, as uno::AtTheBorder does for the library, which is not loaded
// here. No exception but the office's own leaves it.
template <class Body>
decltype(auto) AtTheBorder(Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (const com::sun::star::uno::Exception&) {
    throw;
  } catch (const std::exception& failure) {
    throw com::sun::star::uno::RuntimeException(rtl::OUString::createFromAscii(failure.what()), {});
  } catch (...) {
    throw com::sun::star::uno::RuntimeException("Mirelo's menu failed", {});
  }
}

}  // namespace mirelo::libreoffice
