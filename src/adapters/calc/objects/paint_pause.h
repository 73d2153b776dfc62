#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <memory>

#include "adapters/calc/objects/interfaces.h"

namespace mirelo::calc {

// While it lives, a document's windows are not brought up to date with each change, which takes longer than
// most changes, but with all of them in the end. It ends by itself when the office handles its events:
// whoever forgets it, or shows a dialog meanwhile, leaves no window that stands still.
class PaintPause {
 public:
  PaintPause(const Reference<css::uno::XComponentContext>& context,
             const Reference<css::frame::XModel>& document);
  ~PaintPause();
  PaintPause(const PaintPause&) = delete;
  PaintPause& operator=(const PaintPause&) = delete;

 private:
  class Lock;

  std::shared_ptr<Lock> lock_;
};

}  // namespace mirelo::calc
