#include "adapters/calc/objects/paint_pause.h"

#include <atomic>
#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/XCallback.hpp>
#include <cppuhelper/implbase1.hxx>
#include <utility>

namespace mirelo::calc {

// Of the document, once. The office may end it on a thread of its own, where it is another process.
class PaintPause::Lock {
 public:
  explicit Lock(const Reference<css::frame::XModel>& document) : document_(document) {
    document_->lockControllers();
  }

  void End() noexcept {
    if (ended_.exchange(true)) return;
    try {
      document_->unlockControllers();
    } catch (const css::uno::Exception&) {  // the document is gone
    }
  }

  class AtNextEvent final : public cppu::WeakImplHelper1<css::awt::XCallback> {
   public:
    explicit AtNextEvent(std::shared_ptr<Lock> lock) : lock_(std::move(lock)) {}
    void SAL_CALL notify(const Any&) override { lock_->End(); }

   private:
    const std::shared_ptr<Lock> lock_;
  };

 private:
  const Reference<css::frame::XModel> document_;
  std::atomic<bool> ended_ = false;
};

PaintPause::PaintPause(const Reference<css::uno::XComponentContext>& context,
                       const Reference<css::frame::XModel>& document)
    : lock_(std::make_shared<Lock>(document)) {
  try {
    css::awt::AsyncCallback::create(context)->addCallback(new Lock::AtNextEvent(lock_), Any());
  } catch (...) {
    lock_->End();
    throw;
  }
}

PaintPause::~PaintPause() { lock_->End(); }

}  // namespace mirelo::calc
