#include "adapters/calc/views/frame_watch.h"

#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/util/CloseVetoException.hpp>
#include <cppuhelper/implbase1.hxx>
#include <utility>

namespace mirelo::calc {

using css::uno::Reference;
using css::uno::UNO_QUERY;

class FrameWatch::Listener final : public cppu::WeakImplHelper1<css::util::XCloseListener> {
 public:
  explicit Listener(std::function<void()> closes) : closes_(std::move(closes)) {}

  void SAL_CALL queryClosing(const css::lang::EventObject& event, sal_Bool gets_ownership) override {
    if (closes_ || left_) return;
    if (gets_ownership) owed_ = Reference<css::util::XCloseable>(event.Source, UNO_QUERY);
    throw css::util::CloseVetoException();
  }
  void SAL_CALL notifyClosing(const css::lang::EventObject&) override {
    if (closes_ && !left_) closes_();
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {
    if (closes_ && !left_) closes_();
  }

  void Leave() { left_ = true; }
  const Reference<css::util::XCloseable>& Owed() const { return owed_; }

 private:
  const std::function<void()> closes_;
  bool left_ = false;
  Reference<css::util::XCloseable> owed_;
};

FrameWatch::FrameWatch(const Reference<css::frame::XFrame>& frame, std::function<void()> closes)
    : listener_(new Listener(std::move(closes))) {
  if (!frame.is()) return;
  watched_.emplace_back(frame, UNO_QUERY);
  const Reference<css::frame::XController> controller = frame->getController();
  if (controller.is()) watched_.emplace_back(controller->getModel(), UNO_QUERY);
  std::erase_if(watched_, [](const auto& closeable) { return !closeable.is(); });
  try {
    for (const auto& closeable : watched_) closeable->addCloseListener(listener_);
  } catch (...) {
    End();
    throw;
  }
}

FrameWatch::~FrameWatch() {
  End();
  try {
    const auto& owed = static_cast<const Listener&>(*listener_).Owed();
    if (owed.is()) owed->close(true);
  } catch (const css::uno::Exception&) {
    // Somebody else refuses now.
  }
}

// Whoever keeps the listener all the same has nobody to tell.
void FrameWatch::End() noexcept {
  static_cast<Listener&>(*listener_).Leave();
  for (const auto& closeable : watched_) {
    try {
      closeable->removeCloseListener(listener_);
    } catch (const css::uno::Exception&) {
      // It has gone already.
    }
  }
}

}  // namespace mirelo::calc
