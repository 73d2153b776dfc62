#pragma once

#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/Reference.hxx>

namespace mirelo::calc {

namespace css = com::sun::star;

using css::uno::Any;
using css::uno::Reference;

// The same object by another of its interfaces; the office's RuntimeException where it has none such.
template <class Interface, class Held>
Reference<Interface> As(const Held& held) {
  return Reference<Interface>(held, css::uno::UNO_QUERY_THROW);
}

// Null where it has none such.
template <class Interface, class Held>
Reference<Interface> IfAs(const Held& held) {
  return Reference<Interface>(held, css::uno::UNO_QUERY);
}

}  // namespace mirelo::calc
