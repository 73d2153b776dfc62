#pragma once

#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>

namespace mirelo::calc {

// The office that runs the tests.
com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> OfficeContext();

}  // namespace mirelo::calc
