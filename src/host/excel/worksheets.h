#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::host::excel {

class Worksheet;

// A workbook's worksheets in the order of their tabs.
class Worksheets : public Object {
 public:
  std::string_view TypeName() const override { return "Sheets"; }

  virtual std::int32_t Count() = 0;
  // `index` runs from 1 to Count(); error 9 outside.
  virtual std::shared_ptr<Worksheet> Item(std::int32_t index) = 0;
  // The name is found without regard to case; error 9 when no sheet bears it.
  virtual std::shared_ptr<Worksheet> Item(std::string_view name) = 0;
  // Inserts a new empty sheet before the active one and makes it the active one. It is named "Sheet" with the
  // next number that is free.
  virtual std::shared_ptr<Worksheet> Add() = 0;
};

}  // namespace mirelo::host::excel
