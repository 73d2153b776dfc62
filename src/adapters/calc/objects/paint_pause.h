#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <memory>

#include "adapters/calc/objects/interfaces.h"

namespace mirelo::calc {

// While it lives, a document's windows are not brought up to date with each change, which takes longer than
// most changes, but with all of them in the end. It ends by itself when the office handles its events:
// whoever forgets it, or shows a dialog meanwhile, leaves no window that stands still.
class PaintPause {
 public:
  // `at_event` is called in front of the end where that is the office's, unless that comes on another thread:
  // then the office is another process. It must not throw.
  PaintPause(const Reference<css::uno::XComponentContext>& context,
             const Reference<css::frame::XModel>& document, std::function<void()> at_event);
  ~PaintPause();
  PaintPause(const PaintPause&) = delete;
  PaintPause& operator=(const PaintPause&) = delete;

  bool IsOn() const;

 private:
  class Lock;

  std::shared_ptr<Lock> lock_;
};

}  // namespace mirelo::calc
