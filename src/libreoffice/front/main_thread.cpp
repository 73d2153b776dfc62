#include "libreoffice/front/main_thread.h"

#include <unistd.h>

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/XCallback.hpp>
#include <cppuhelper/implbase1.hxx>
#include <utility>

#include "libreoffice/front/border.h"

namespace mirelo::libreoffice {

namespace {

namespace css = com::sun::star;

class Later final : public cppu::WeakImplHelper1<css::awt::XCallback> {
 public:
  explicit Later(std::function<void()> act) : act_(std::move(act)) {}
  void SAL_CALL notify(const css::uno::Any&) override { AtTheBorder(act_); }

 private:
  const std::function<void()> act_;
};

}  // namespace

void OnMainThread(const css::uno::Reference<css::uno::XComponentContext>& context,
                  std::function<void()> act) {
  if (::gettid() == ::getpid()) return act();
  css::awt::AsyncCallback::create(context)->addCallback(new Later(std::move(act)), css::uno::Any());
}

}  // namespace mirelo::libreoffice
