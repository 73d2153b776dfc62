#pragma once

#include <com/sun/star/frame/XDispatch.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/weakref.hxx>
#include <rtl/ref.hxx>
#include <utility>
#include <vector>

#include "automation/event.h"

namespace mirelo {
class RuntimeError;
}

namespace mirelo::libreoffice {

namespace css = com::sun::star;

// The commands of the menu in one window, for all of its documents' time there. States are asked for on the
// office's main thread; a command that comes on another is carried out there later.
class Commands final : public cppu::WeakImplHelper1<css::frame::XDispatch> {
 public:
  using Listener = css::uno::Reference<css::frame::XStatusListener>;

  Commands(const css::uno::Reference<css::uno::XComponentContext>& context,
           const css::uno::Reference<css::frame::XFrame>& frame);
  ~Commands() override;
  Commands(const Commands&) = delete;
  Commands& operator=(const Commands&) = delete;

  void SAL_CALL dispatch(const css::util::URL& command,
                         const css::uno::Sequence<css::beans::PropertyValue>& arguments) override;
  void SAL_CALL addStatusListener(const Listener& listener, const css::util::URL& command) override;
  void SAL_CALL removeStatusListener(const Listener& listener, const css::util::URL& command) override;

 private:
  void Run(const rtl::OUString& command);
  void Act(const rtl::OUString& command);
  void Complain(const RuntimeError& error);
  void Follow();
  void TellAll();
  void Tell(const Listener& listener, const css::util::URL& command);

  const css::uno::Reference<css::uno::XComponentContext> context_;
  const css::uno::WeakReference<css::frame::XFrame> frame_;  // which holds this
  std::vector<std::pair<Listener, css::util::URL>> listeners_;
  Event<>::Cookie changed_ = 0;  // since somebody listens
};

}  // namespace mirelo::libreoffice
