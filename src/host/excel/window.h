#pragma once

#include <memory>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::host::excel {

class Range;

// What shows a workbook.
class Window : public Object {
 public:
  std::string_view TypeName() const override { return "Window"; }

  // The cells of the sheet in front that the window shows, those cut off at its edge included. They begin at
  // A1, whatever is frozen. Error 1004 when that sheet has no cells.
  virtual std::shared_ptr<Range> VisibleRange() = 0;
};

}  // namespace mirelo::host::excel
