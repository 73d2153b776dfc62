#pragma once

#include "automation/variant.h"

namespace mirelo::host::excel {

// What a person can select: cells, or something that floats over them.
class Selectable : public Object {
 public:
  virtual void Select() = 0;
};

}  // namespace mirelo::host::excel
