// The service mirelo.Errand, which a program has the office make that it has started for an errand.

#include <sal/types.h>

#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/task/XJobExecutor.hpp>
#include <cppuhelper/implbase2.hxx>
#include <cppuhelper/supportsservice.hxx>
#include <cstdlib>
#include <string>

#include "libreoffice/errand/errand.h"
#include "libreoffice/errand_runner.h"
#include "libreoffice/office_process.h"
#include "uno/errors.h"

namespace mirelo::libreoffice {

namespace {

class ErrandService final : public cppu::WeakImplHelper2<css::task::XJobExecutor, css::lang::XServiceInfo> {
 public:
  explicit ErrandService(const css::uno::Reference<css::uno::XComponentContext>& context)
      : context_(context) {}

  void SAL_CALL trigger(const rtl::OUString&) override {
    uno::AtTheBorder([&] {
      const char* const line = std::getenv(kErrandVariable);
      if (line == nullptr || !IsMainThread()) return;
      ErrandRunner::Begin(context_, std::atoi(line));
      ::unsetenv(kErrandVariable);
    });
  }

  rtl::OUString SAL_CALL getImplementationName() override { return "mirelo.impl.Errand"; }
  sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override {
    return uno::AtTheBorder([&] { return cppu::supportsService(this, name); });
  }
  css::uno::Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override {
    return uno::AtTheBorder([] {
      const rtl::OUString name("mirelo.Errand");
      return css::uno::Sequence<rtl::OUString>(&name, 1);
    });
  }

 private:
  const css::uno::Reference<css::uno::XComponentContext> context_;
};

}  // namespace

}  // namespace mirelo::libreoffice

extern "C" SAL_DLLPUBLIC_EXPORT com::sun::star::uno::XInterface* mirelo_Errand(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>&) {
  return cppu::acquire(new mirelo::libreoffice::ErrandService(context));
}
