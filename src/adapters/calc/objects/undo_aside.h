#pragma once

#include <com/sun/star/document/XUndoManager.hpp>

#include "adapters/calc/objects/interfaces.h"

namespace mirelo::calc {

// Keeps what is done in its lifetime out of the person's undo list, which stays as it is. May nest.
class UndoAside {
 public:
  explicit UndoAside(const Reference<css::document::XUndoManager>& steps) : steps_(steps) { steps_->lock(); }
  ~UndoAside();
  UndoAside(const UndoAside&) = delete;
  UndoAside& operator=(const UndoAside&) = delete;

 private:
  Reference<css::document::XUndoManager> steps_;
};

}  // namespace mirelo::calc
