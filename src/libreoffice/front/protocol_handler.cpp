// The service by which the office finds the menu's commands (ProtocolHandler.xcu), one for each window. It is
// a library of its own, and a small one, since every spreadsheet's window loads it.

#include <sal/types.h>

#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/lang/XInitialization.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <cppuhelper/implbase3.hxx>
#include <cppuhelper/supportsservice.hxx>
#include <mutex>

#include "libreoffice/command_urls.h"
#include "libreoffice/front/border.h"
#include "libreoffice/front/lazy_dispatch.h"

namespace mirelo::libreoffice {

namespace {

using css::uno::Reference;
using css::uno::Sequence;

class ProtocolHandler final
    : public cppu::WeakImplHelper3<css::frame::XDispatchProvider, css::lang::XInitialization,
                                   css::lang::XServiceInfo> {
 public:
  explicit ProtocolHandler(const Reference<css::uno::XComponentContext>& context) : context_(context) {}

  void SAL_CALL initialize(const Sequence<css::uno::Any>& arguments) override {
    AtTheBorder([&] {
      Reference<css::frame::XFrame> frame;
      if (arguments.hasElements() && (arguments[0] >>= frame)) frame_ = frame;
    });
  }

  Reference<css::frame::XDispatch> SAL_CALL queryDispatch(const css::util::URL& command, const rtl::OUString&,
                                                          sal_Int32) override {
    return AtTheBorder([&] { return DispatchFor(command); });
  }

  Sequence<Reference<css::frame::XDispatch>> SAL_CALL
  queryDispatches(const Sequence<css::frame::DispatchDescriptor>& asked) override {
    return AtTheBorder([&] {
      Sequence<Reference<css::frame::XDispatch>> found(asked.getLength());
      for (sal_Int32 i = 0; i < asked.getLength(); ++i)
        found.getArray()[i] = DispatchFor(asked[i].FeatureURL);
      return found;
    });
  }

  rtl::OUString SAL_CALL getImplementationName() override { return "mirelo.impl.ProtocolHandler"; }
  sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override {
    return AtTheBorder([&] { return cppu::supportsService(this, name); });
  }
  Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override {
    return AtTheBorder([] {
      const rtl::OUString name("mirelo.ProtocolHandler");
      return Sequence<rtl::OUString>(&name, 1);
    });
  }

 private:
  // Another process asks on another thread.
  Reference<css::frame::XDispatch> DispatchFor(const css::util::URL& command) {
    if (!command.Complete.startsWith(kScheme)) return {};
    const std::lock_guard lock(mutex_);
    if (!dispatch_.is()) dispatch_ = LazyDispatch::Of(context_, frame_).get();
    return dispatch_;
  }

  const Reference<css::uno::XComponentContext> context_;
  std::mutex mutex_;
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
