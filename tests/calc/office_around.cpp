#include "calc/in_office/run_in_office.h"
#include "calc/office_of_tests.h"

namespace mirelo::testing {

const css::uno::Reference<css::uno::XComponentContext>& OfficeOfTests() {
  static const auto& context = *new css::uno::Reference(calc::OfficeContext());  // outlives what unloads it
  return context;
}

bool EndOfficeOfTests() { return true; }  // who runs the tests ends it

}  // namespace mirelo::testing
