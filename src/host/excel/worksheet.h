#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::host::excel {

class Range;

// One sheet of cells. Its size is that of its Rows() and Columns(); cells that nobody wrote cost nothing.
class Worksheet : public Object {
 public:
  std::string_view TypeName() const override { return "Worksheet"; }

  virtual std::string Name() = 0;
  // 1 to 31 characters (UTF-16 units), none of : \ / ? * [ ], no apostrophe at either end, not the reserved
  // word "History", and no other sheet's name without regard to case; error 1004 otherwise, and the old name
  // stays.
  virtual void Name(std::string_view name) = 0;

  // The place among the tabs, from 1.
  virtual std::int32_t Index() = 0;
  virtual void Activate() = 0;

  // "B2", "$A$1:C3" (any two corners), "A:C", "3:5", letters of either case. Error 1004 for other text and
  // for what lies off the sheet.
  virtual std::shared_ptr<excel::Range> Range(std::string_view address) = 0;
  // The smallest range that holds both.
  virtual std::shared_ptr<excel::Range> Range(std::string_view first, std::string_view last) = 0;
  // Error 1004 for ranges of another sheet.
  virtual std::shared_ptr<excel::Range> Range(excel::Range& first, excel::Range& last) = 0;

  // All cells of the sheet.
  virtual std::shared_ptr<excel::Range> Cells() = 0;
  // One cell, counted from 1; error 1004 off the sheet.
  virtual std::shared_ptr<excel::Range> Cells(std::int32_t row, std::int32_t column) = 0;

  // The sheet as rows, or as columns.
  virtual std::shared_ptr<excel::Range> Rows() = 0;
  virtual std::shared_ptr<excel::Range> Columns() = 0;
  // Whole rows "5" or "5:7"; whole columns "B" or "B:D". Errors as Range.
  virtual std::shared_ptr<excel::Range> Rows(std::string_view rows) = 0;
  virtual std::shared_ptr<excel::Range> Columns(std::string_view columns) = 0;
};

}  // namespace mirelo::host::excel
