#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/util/XCloseListener.hpp>
#include <functional>

namespace mirelo::calc {

namespace css = com::sun::star;

// Sees to the closing of a frame for as long as something lies above it.
class FrameWatch {
 public:
  // Calls `closes` when the frame goes, which must not fail. Where there is none, the frame refuses to be
  // closed; one that was to be closed by whoever refuses it is closed at the end of this. A null frame never
  // goes.
  FrameWatch(const css::uno::Reference<css::frame::XFrame>& frame, std::function<void()> closes);
  ~FrameWatch();
  FrameWatch(const FrameWatch&) = delete;
  FrameWatch& operator=(const FrameWatch&) = delete;

 private:
  class Listener;

  css::uno::Reference<css::frame::XFrame> frame_;
  css::uno::Reference<css::util::XCloseListener> listener_;
};

}  // namespace mirelo::calc
