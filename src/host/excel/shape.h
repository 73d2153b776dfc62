#pragma once

#include <string_view>

#include "automation/variant.h"
#include "host/excel/constants.h"

namespace mirelo::host::excel {

// Something that floats over the cells of a sheet.
class Shape : public Object {
 public:
  std::string_view TypeName() const override { return "Shape"; }

  // Points. Sizes are whole pixels of a 96 dpi screen, three quarters of a point each.
  virtual double Height() = 0;
  virtual double Width() = 0;

  // Multiplies the present height (width) by a factor above 0; error 1004 for other factors.
  // `relative_to_original_size` must be msoFalse: error 1004 for what is no picture.
  virtual void ScaleHeight(double factor, MsoTriState relative_to_original_size) = 0;
  virtual void ScaleWidth(double factor, MsoTriState relative_to_original_size) = 0;
};

}  // namespace mirelo::host::excel
