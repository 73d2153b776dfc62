#include "adapters/calc/objects/undo_aside.h"

namespace mirelo::calc {

UndoAside::~UndoAside() {
  try {
    steps_->unlock();
  } catch (const css::uno::Exception&) {  // the document is gone, and its undo list
  }
}

}  // namespace mirelo::calc
