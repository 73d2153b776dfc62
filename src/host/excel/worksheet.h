#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "automation/variant.h"
#include "host/excel/sheet.h"

namespace mirelo::host::excel {

class Range;
class Shapes;

// One sheet of cells. Its size is that of its Rows() and Columns(); cells that nobody wrote cost nothing.
class Worksheet : public Sheet {
 public:
  std::string_view TypeName() const override { return "Worksheet"; }
  XlSheetType Type() final { return xlSheetWorksheet; }

  // The place among the tabs, from 1.
  virtual std::int32_t Index() = 0;
  // As Select().
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

  virtual std::shared_ptr<excel::Shapes> Shapes() = 0;

  // The sheet as rows, or as columns.
  virtual std::shared_ptr<excel::Range> Rows() = 0;
  virtual std::shared_ptr<excel::Range> Columns() = 0;
  // Whole rows "5" or "5:7"; whole columns "B" or "B:D". Errors as Range.
  virtual std::shared_ptr<excel::Range> Rows(std::string_view rows) = 0;
  virtual std::shared_ptr<excel::Range> Columns(std::string_view columns) = 0;
};

}  // namespace mirelo::host::excel
