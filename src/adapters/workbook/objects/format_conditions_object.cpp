#include "adapters/workbook/objects/format_conditions_object.h"

#include <cstddef>
#include <string>
#include <utility>

#include "adapters/workbook/rules.h"
#include "host/excel/font.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/compared_number.h"
#include "spreadsheet/refusals.h"

namespace mirelo::workbook {

using namespace host::excel;

namespace {

class ConditionFont final : public Font {
 public:
  explicit ConditionFont(std::shared_ptr<Condition> condition) : condition_(std::move(condition)) {}

  Variant Bold() override { return condition_->format.bold ? Variant(true) : Variant(); }
  void Bold(bool bold) override { condition_->format.bold = bold; }
  // A condition leaves the font size to the cell.
  Variant Size() override { return {}; }
  void Size(double) override { throw Refusals::FontSizeOfACondition(); }
  Variant ColorIndex() override {
    const workbook::Color color = condition_->format.color;
    return color == kAutomatic ? Variant() : Variant(IndexOfColor(color));
  }
  void ColorIndex(std::int32_t index) override { condition_->format.color = ColorOfIndex(index); }
  Variant Color() override {
    const workbook::Color color = condition_->format.color;
    return color == kAutomatic ? Variant() : Variant(NumberOfColor(color, kBlack));
  }

 private:
  std::shared_ptr<Condition> condition_;
};

class FormatConditionObject final : public FormatCondition {
 public:
  explicit FormatConditionObject(std::shared_ptr<Condition> condition) : condition_(std::move(condition)) {}

  XlFormatConditionOperator Operator() override { return condition_->op; }
  std::string Formula1() override { return "=" + condition_->formula1; }
  std::shared_ptr<host::excel::Font> Font() override { return std::make_shared<ConditionFont>(condition_); }

 private:
  std::shared_ptr<Condition> condition_;
};

}  // namespace

std::int32_t FormatConditionsObject::Count() {
  return static_cast<std::int32_t>(block_.sheet->conditions.Touching(block_.area).size());
}

FormatConditionsObject::ConditionPtr FormatConditionsObject::Item(std::int32_t index) {
  const Conditions::List conditions = block_.sheet->conditions.Touching(block_.area);
  if (index < 1 || static_cast<std::size_t>(index) > conditions.size()) throw Errors::SubscriptOutOfRange();
  return std::make_shared<FormatConditionObject>(conditions[static_cast<std::size_t>(index) - 1]);
}

FormatConditionsObject::ConditionPtr FormatConditionsObject::Add(XlFormatConditionType type,
                                                                 XlFormatConditionOperator op,
                                                                 std::string_view formula1) {
  CheckComparison(type, op);
  Condition condition;
  condition.areas = {block_.area};
  condition.op = op;
  condition.formula1 = NumberInFormula(formula1);
  return std::make_shared<FormatConditionObject>(block_.sheet->conditions.Add(std::move(condition)));
}

void FormatConditionsObject::Delete() { block_.sheet->conditions.Clear(block_.area); }

}  // namespace mirelo::workbook
