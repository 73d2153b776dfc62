#pragma once

#include "adapters/poll/descriptor.h"

namespace mirelo::poll {

// A descriptor that becomes ready for reading when another thread rings. It counts: each ring is taken once.
class Bell {
 public:
  Bell() = default;  // none
  // Error 67 when no descriptor is left.
  static Bell Open();

  int Number() const { return descriptor_.Number(); }  // for a loop to watch. -1: none
  // On any thread.
  void Ring();
  // False when nobody has rung.
  bool Take();

 private:
  Descriptor descriptor_;
};

}  // namespace mirelo::poll
