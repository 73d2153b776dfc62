// Tests as a job of the office's, which runs them on its main thread: the views are made
// of its own toolkit, in its process.

#include "calc/in_office/run_in_office.h"

#include <gmock/gmock.h>
#include <sal/types.h>

#include <com/sun/star/task/XJob.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cstdlib>
#include <fstream>
#include <string>

namespace mirelo::calc {

namespace {

namespace css = com::sun::star;
using Context = css::uno::Reference<css::uno::XComponentContext>;

Context& ContextOfTests() {
  static auto& context = *new Context;
  return context;
}

class Tests final : public cppu::WeakImplHelper1<css::task::XJob> {
 public:
  css::uno::Any SAL_CALL execute(const css::uno::Sequence<css::beans::NamedValue>&) override {
    int count = 1;
    char program[] = "tests";
    char* arguments[] = {program, nullptr};
    ::testing::InitGoogleMock(&count, arguments);
    if (const char* filter = std::getenv("MIRELO_FILTER")) ::testing::GTEST_FLAG(filter) = filter;
    const int result = RUN_ALL_TESTS();
    std::ofstream(std::getenv("MIRELO_NOTES")) << "result: " << result << "\n";
    return {};
  }
};

}  // namespace

Context OfficeContext() { return ContextOfTests(); }

}  // namespace mirelo::calc

extern "C" SAL_DLLPUBLIC_EXPORT com::sun::star::uno::XInterface* mirelo_tests(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>&) {
  mirelo::calc::ContextOfTests() = context;
  auto* tests = new mirelo::calc::Tests;
  tests->acquire();  // the caller's
  return static_cast<com::sun::star::task::XJob*>(tests);
}
