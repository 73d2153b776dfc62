#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::host::excel {

class Shape;

// What floats over the cells of a sheet, from the bottom of the pile to its top: charts in the order in which
// they came, and above them the boxes of comments, row by row.
class Shapes : public Object {
 public:
  std::string_view TypeName() const override { return "Shapes"; }

  virtual std::int32_t Count() = 0;
  // `index` runs from 1 to Count(); error 1004 outside.
  virtual std::shared_ptr<Shape> Item(std::int32_t index) = 0;
  // The name is found without regard to case; error 1004 when no shape bears it.
  virtual std::shared_ptr<Shape> Item(std::string_view name) = 0;
};

}  // namespace mirelo::host::excel
