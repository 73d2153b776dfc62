#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/util/XCloseListener.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <functional>
#include <vector>

namespace mirelo::calc {

namespace css = com::sun::star;

// Sees to the closing of a frame, and of the document in it, for as long as something lies above it.
class FrameWatch {
 public:
  // Calls `closes`, which must not fail, when one of them goes. Where there is none, both refuse to be
  // closed; what was to be closed by whoever refuses it is closed at the end of this. A null frame never
  // goes.
  FrameWatch(const css::uno::Reference<css::frame::XFrame>& frame, std::function<void()> closes);
  ~FrameWatch();
  FrameWatch(const FrameWatch&) = delete;
  FrameWatch& operator=(const FrameWatch&) = delete;

 private:
  class Listener;

  void End() noexcept;

  std::vector<css::uno::Reference<css::util::XCloseable>> watched_;
  css::uno::Reference<css::util::XCloseListener> listener_;
};

}  // namespace mirelo::calc
