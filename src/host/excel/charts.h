#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::host::excel {

class Chart;

// A workbook's chart sheets. Charts that lie on worksheets are not among them.
class Charts : public Object {
 public:
  std::string_view TypeName() const override { return "Sheets"; }

  virtual std::int32_t Count() = 0;
  // `index` runs from 1 to Count(); error 9 outside.
  virtual std::shared_ptr<Chart> Item(std::int32_t index) = 0;
  // The name is found without regard to case; error 9 when no chart sheet bears it.
  virtual std::shared_ptr<Chart> Item(std::string_view name) = 0;
  // A new chart sheet with an empty clustered column chart, brought to the front. It is named "Chart" with
  // the next number that is free.
  virtual std::shared_ptr<Chart> Add() = 0;
};

}  // namespace mirelo::host::excel
