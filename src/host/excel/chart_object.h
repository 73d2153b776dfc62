#pragma once

#include <memory>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::host::excel {

class Worksheet;

// What stands between a worksheet and a chart that lies on it.
class ChartObject : public Object {
 public:
  std::string_view TypeName() const override { return "ChartObject"; }

  // The worksheet. Error 1004 once the chart was taken off it.
  virtual std::shared_ptr<Worksheet> Parent() = 0;
};

}  // namespace mirelo::host::excel
