#include "adapters/calc/views/frame_watch.h"

#include <com/sun/star/util/CloseVetoException.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <cppuhelper/implbase1.hxx>
#include <utility>

namespace mirelo::calc {

using css::uno::Reference;
using css::uno::UNO_QUERY;

class FrameWatch::Listener final : public cppu::WeakImplHelper1<css::util::XCloseListener> {
 public:
  explicit Listener(std::function<void()> closes) : closes_(std::move(closes)) {}

  void SAL_CALL queryClosing(const css::lang::EventObject&, sal_Bool gets_ownership) override {
    if (closes_) return;
    owes_closing_ = owes_closing_ || gets_ownership;
    throw css::util::CloseVetoException();
  }
  void SAL_CALL notifyClosing(const css::lang::EventObject&) override {
    if (closes_) closes_();
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override {
    if (closes_) closes_();
  }

  bool OwesClosing() const { return owes_closing_; }

 private:
  std::function<void()> closes_;
  bool owes_closing_ = false;
};

FrameWatch::FrameWatch(const Reference<css::frame::XFrame>& frame, std::function<void()> closes)
    : frame_(frame), listener_(new Listener(std::move(closes))) {
  const Reference<css::util::XCloseable> closeable(frame_, UNO_QUERY);
  if (closeable.is()) closeable->addCloseListener(listener_);
}

FrameWatch::~FrameWatch() {
  try {
    const Reference<css::util::XCloseable> closeable(frame_, UNO_QUERY);
    if (!closeable.is()) return;
    closeable->removeCloseListener(listener_);
    if (static_cast<const Listener&>(*listener_).OwesClosing()) closeable->close(true);
  } catch (const css::uno::Exception&) {
    // It has gone already, or somebody else refuses now.
  }
}

}  // namespace mirelo::calc
