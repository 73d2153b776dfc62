#pragma once

#include <com/sun/star/uno/Exception.hpp>
#include <utility>

#include "automation/runtime_error.h"

namespace mirelo::uno {

namespace css = com::sun::star;

// Raises the error as a macro is to see it: in Err where Basic knows its number, else with the number in the
// text, which Error$ gives.
[[noreturn]] void RaiseInOffice(const RuntimeError& error);

// What failed in the office, as the classes know errors.
RuntimeError FromOffice(const css::uno::Exception& failure);

// The error that is being handled, the office's or any other.
RuntimeError ErrorInHand();

// Runs the body of whatever the office calls. No exception but the office's own leaves it: any other that
// came into the office's frames would end the office. tests/architecture finds what the office calls without.
template <class Body>
decltype(auto) AtTheBorder(Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (const css::uno::Exception&) {
    throw;
  } catch (...) {
    RaiseInOffice(CurrentError());
  }
}

}  // namespace mirelo::uno
