#pragma once

#include <com/sun/star/frame/XDispatch.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/weakref.hxx>
#include <rtl/ref.hxx>
#include <utility>
#include <vector>

namespace mirelo::libreoffice {

namespace css = com::sun::star;

// A command of the menu in one window. Each window asks for the states of commands as soon as it opens, and
// the answer is known without the library as long as nobody has used it: no day runs. So the library is
// loaded when a command is chosen for the first time; from then on it answers, here and in all windows.
//
// The library and the states are a matter of the office's main thread. What is asked for on another one, as
// for another process, is done there later.
class LazyDispatch final : public cppu::WeakImplHelper1<css::frame::XDispatch> {
 public:
  static rtl::Reference<LazyDispatch> Of(const css::uno::Reference<css::uno::XComponentContext>& context,
                                         const css::uno::Reference<css::frame::XFrame>& frame);
  LazyDispatch(const LazyDispatch&) = delete;
  LazyDispatch& operator=(const LazyDispatch&) = delete;

  void SAL_CALL dispatch(const css::util::URL& command,
                         const css::uno::Sequence<css::beans::PropertyValue>& arguments) override;
  void SAL_CALL addStatusListener(const css::uno::Reference<css::frame::XStatusListener>& listener,
                                  const css::util::URL& command) override;
  void SAL_CALL removeStatusListener(const css::uno::Reference<css::frame::XStatusListener>& listener,
                                     const css::util::URL& command) override;

 private:
  using Listener = std::pair<css::uno::Reference<css::frame::XStatusListener>, css::util::URL>;

  LazyDispatch(const css::uno::Reference<css::uno::XComponentContext>& context,
               const css::uno::Reference<css::frame::XFrame>& frame);

  void Add(const css::uno::Reference<css::frame::XStatusListener>& listener, const css::util::URL& command);
  void Remove(const css::uno::Reference<css::frame::XStatusListener>& listener,
              const css::util::URL& command);
  void Load();
  static void LoadAll();

  const css::uno::Reference<css::uno::XComponentContext> context_;
  const css::uno::WeakReference<css::frame::XFrame> frame_;  // which holds this
  css::uno::Reference<css::frame::XDispatch> library_;       // null as long as nobody has used it
  std::vector<Listener> listeners_;                          // who waits for it
};

}  // namespace mirelo::libreoffice
