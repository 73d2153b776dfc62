#pragma once

#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>

namespace mirelo::testing {

namespace css = com::sun::star;

// The office that tests run against: one in a process of its own, which starts when it is first asked for
// (office_process.cpp), or that in whose process the tests are (office_around.cpp). Raises
// std::runtime_error, with what the office had to say, where it does not come up.
const css::uno::Reference<css::uno::XComponentContext>& OfficeOfTests();

// Ends the one that was started. Whether it ended well.
bool EndOfficeOfTests();

}  // namespace mirelo::testing
