#include "adapters/calc/objects/paint_pause.h"

#include <atomic>
#include <com/sun/star/awt/AsyncCallback.hpp>
#include <com/sun/star/awt/XCallback.hpp>
#include <cppuhelper/implbase1.hxx>
#include <thread>
#include <utility>

namespace mirelo::calc {

// Of the document, once. The office may end it on a thread of its own, where it is another process.
class PaintPause::Lock {
 public:
  Lock(const Reference<css::frame::XModel>& document, std::function<void()> at_event)
      : document_(document), at_event_(std::move(at_event)) {
    document_->lockControllers();
  }

  void End() noexcept {
    if (ended_.exchange(true)) return;
    try {
      document_->unlockControllers();
    } catch (const css::uno::Exception&) {  // the document is gone
    }
  }

  bool IsOn() const { return !ended_; }

  void EndAtEvent() noexcept {
    if (IsOn() && std::this_thread::get_id() == thread_) at_event_();
    End();
  }

  class AtNextEvent final : public cppu::WeakImplHelper1<css::awt::XCallback> {
   public:
    explicit AtNextEvent(std::shared_ptr<Lock> lock) : lock_(std::move(lock)) {}
    void SAL_CALL notify(const Any&) override { lock_->EndAtEvent(); }

   private:
    const std::shared_ptr<Lock> lock_;
  };

 private:
  const Reference<css::frame::XModel> document_;
  const std::function<void()> at_event_;
  const std::thread::id thread_ = std::this_thread::get_id();
  std::atomic<bool> ended_ = false;
};

PaintPause::PaintPause(const Reference<css::uno::XComponentContext>& context,
                       const Reference<css::frame::XModel>& document, std::function<void()> at_event)
    : lock_(std::make_shared<Lock>(document, std::move(at_event))) {
  try {
    css::awt::AsyncCallback::create(context)->addCallback(new Lock::AtNextEvent(lock_), Any());
  } catch (...) {
    lock_->End();
    throw;
  }
}

PaintPause::~PaintPause() { lock_->End(); }

bool PaintPause::IsOn() const { return lock_->IsOn(); }

}  // namespace mirelo::calc
