#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "automation/variant.h"
#include "host/excel/constants.h"

namespace mirelo::host::excel {

class Font;

// One conditional format: a condition, and what it changes of the cells that meet it.
class FormatCondition : public Object {
 public:
  std::string_view TypeName() const override { return "FormatCondition"; }

  // How a cell's value is compared, and with what: a formula with its leading "=".
  virtual XlFormatConditionOperator Operator() = 0;
  virtual std::string Formula1() = 0;

  // A property that the condition leaves to the cell reads as empty; a font that is not bold, and the
  // automatic colour, are left to the cell.
  virtual std::shared_ptr<excel::Font> Font() = 0;
};

// The conditional formats of a range: those that reach at least one of its cells, from the first that is
// looked at to the last.
class FormatConditions : public Object {
 public:
  std::string_view TypeName() const override { return "FormatConditions"; }

  virtual std::int32_t Count() = 0;
  // `index` runs from 1 to Count(); error 9 outside.
  virtual std::shared_ptr<FormatCondition> Item(std::int32_t index) = 0;

  // Adds a condition for all cells of the range, behind those that are there: their values compared with
  // `formula1`, the text of a number, with or without a leading "=". Blank cells count as 0, texts and
  // booleans as greater than any number. Error 1004 for types other than xlCellValue, for xlBetween,
  // xlNotBetween and what is no operator, and for other texts. At first the condition changes nothing of its
  // cells.
  virtual std::shared_ptr<FormatCondition> Add(XlFormatConditionType type, XlFormatConditionOperator op,
                                               std::string_view formula1) = 0;

  // Takes the conditions away from the range's cells; cells outside the range keep theirs.
  virtual void Delete() = 0;
};

}  // namespace mirelo::host::excel
