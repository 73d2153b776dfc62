#pragma once

#include <memory>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::host::excel {

class Font;
class Interior;

// How a cell is shown: its own formats with the changes of those conditional formats whose condition its
// value meets. It can only be read; error 1004 when it is set.
class DisplayFormat : public Object {
 public:
  std::string_view TypeName() const override { return "DisplayFormat"; }

  virtual std::shared_ptr<excel::Font> Font() = 0;
  virtual std::shared_ptr<excel::Interior> Interior() = 0;
};

}  // namespace mirelo::host::excel
