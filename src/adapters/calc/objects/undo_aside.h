#pragma once

#include <com/sun/star/document/XUndoManager.hpp>

#include "adapters/calc/objects/interfaces.h"

namespace mirelo::calc {

// Keeps what is done in its lifetime out of the person's undo list, which stays as it is. The office opens
// the list again behind many a change, so of several changes Stay is said in front of each but the first.
// Does not nest.
class UndoAside {
 public:
  explicit UndoAside(const Reference<css::document::XUndoManager>& steps) : steps_(steps) { steps_->lock(); }
  ~UndoAside();
  UndoAside(const UndoAside&) = delete;
  UndoAside& operator=(const UndoAside&) = delete;

  // Within the lifetime of one of these.
  static void Stay(const Reference<css::document::XUndoManager>& steps) {
    steps->unlock();
    steps->lock();
  }

 private:
  Reference<css::document::XUndoManager> steps_;
};

}  // namespace mirelo::calc
