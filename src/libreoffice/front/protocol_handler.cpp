// The service by which the office finds the menu's commands (ProtocolHandler.xcu), one for each window. It is
// a library of its own, and a small one, since every spreadsheet's window loads it.

#include <sal/types.h>

#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/lang/XInitialization.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <cppuhelper/implbase3.hxx>
#include <cppuhelper/supportsservice.hxx>
#include <utility>

#include "libreoffice/command_urls.h"
#include "libreoffice/front/lazy_dispatch.h"

namespace mirelo::libreoffice {

namespace {

using css::uno::Reference;
using css::uno::Sequence;

class ProtocolHandler final
    : public cppu::WeakImplHelper3<css::frame::XDispatchProvider, css::lang::XInitialization,
                                   css::lang::XServiceInfo> {
 public:
  explicit ProtocolHandler(Reference<css::uno::XComponentContext> context) : context_(std::move(context)) {}

  void SAL_CALL initialize(const Sequence<css::uno::Any>& arguments) override {
    Reference<css::frame::XFrame> frame;
    if (arguments.hasElements() && (arguments[0] >>= frame)) frame_ = frame;
  }

  Reference<css::frame::XDispatch> SAL_CALL queryDispatch(const css::util::URL& command, const rtl::OUString&,
                                                          sal_Int32) override {
    if (!command.Complete.startsWith(kScheme)) return {};
    if (!dispatch_.is()) dispatch_ = new LazyDispatch(context_, frame_);
    return dispatch_;
  }

  Sequence<Reference<css::frame::XDispatch>> SAL_CALL
  queryDispatches(const Sequence<css::frame::DispatchDescriptor>& asked) override {
    Sequence<Reference<css::frame::XDispatch>> found(asked.getLength());
    for (sal_Int32 i = 0; i < asked.getLength(); ++i)
      found.getArray()[i] = queryDispatch(asked[i].FeatureURL, asked[i].FrameName, asked[i].SearchFlags);
    return found;
  }

  rtl::OUString SAL_CALL getImplementationName() override { return "mirelo.impl.ProtocolHandler"; }
  sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override {
    return cppu::supportsService(this, name);
  }
  Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override {
    const rtl::OUString name("mirelo.ProtocolHandler");
    return Sequence<rtl::OUString>(&name, 1);
  }

 private:
  const Reference<css::uno::XComponentContext> context_;
  css::uno::WeakReference<css::frame::XFrame> frame_;
  Reference<css::frame::XDispatch> dispatch_;
};

}  // namespace

}  // namespace mirelo::libreoffice

extern "C" SAL_DLLPUBLIC_EXPORT com::sun::star::uno::XInterface* mirelo_front_ProtocolHandler(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>&) {
  return cppu::acquire(new mirelo::libreoffice::ProtocolHandler(context));
}
