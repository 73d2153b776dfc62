#include "libreoffice/office_process.h"

#include <unistd.h>

#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XCallback.hpp>
#include <com/sun/star/awt/XToolkitExperimental.hpp>
#include <cppuhelper/implbase1.hxx>
#include <functional>
#include <utility>

#include "uno/errors.h"

namespace mirelo::libreoffice {

namespace {

using css::uno::Any;
using css::uno::Reference;
using Context = Reference<css::uno::XComponentContext>;

class PostedStep final : public cppu::WeakImplHelper1<css::awt::XCallback> {
 public:
  explicit PostedStep(std::function<void()> step) : step_(std::move(step)) {}
  void SAL_CALL notify(const Any&) override { uno::AtTheBorder(step_); }

 private:
  std::function<void()> step_;
};

class OfficeProcess final : public calc::Office {
 public:
  explicit OfficeProcess(const Context& context)
      : callbacks_(css::awt::AsyncCallback::create(context)),
        toolkit_(css::awt::Toolkit::create(context), css::uno::UNO_QUERY_THROW) {}

  bool Post(std::function<void()> step) override {
    try {
      callbacks_->addCallback(new PostedStep(std::move(step)), Any());
      return true;
    } catch (const css::uno::Exception&) {
      return false;
    }
  }

  void HandleEvents() override { toolkit_->processEventsToIdle(); }

 private:
  Reference<css::awt::XRequestCallback> callbacks_;
  Reference<css::awt::XToolkitExperimental> toolkit_;
};

}  // namespace

std::shared_ptr<calc::Office> OfficeOf(const Context& context) {
  return std::make_shared<OfficeProcess>(context);
}

bool IsMainThread() { return ::gettid() == ::getpid(); }

}  // namespace mirelo::libreoffice
