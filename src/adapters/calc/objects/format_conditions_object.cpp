#include "adapters/calc/objects/format_conditions_object.h"

#include <cstddef>
#include <string>
#include <utility>

#include "adapters/calc/objects/block_change.h"
#include "adapters/calc/objects/differential_formats.h"
#include "adapters/calc/objects/sheet_conditions.h"
#include "adapters/calc/objects/undo_aside.h"
#include "host/excel/font.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/compared_number.h"
#include "spreadsheet/errors.h"
#include "spreadsheet/refusals.h"

namespace mirelo::calc {

using namespace host::excel;
using namespace spreadsheet;

namespace {

// Conditions stand beside the formats that cells have of themselves.
template <class Body>
void ChangeConditions(const CellBlock& block, Body&& body) {
  Document& document = block.document();
  document.AskAsItStands([&] {
    block.CheckNotProtected();
    const UndoAside aside(document, UndoAside::OfCells());
    std::forward<Body>(body)();
  });
}

// A condition of a block's cells by its number among them, from 0.
struct ConditionPlace {
  CellBlock block;
  std::size_t number;

  // Called within Document::Ask. Error 1004 when it is gone.
  SheetCondition Find() const {
    const auto touching = SheetConditions(block.sheet).Touching(block.area);
    if (number >= touching.size()) throw Refused("This condition is no longer there.");
    return touching[number];
  }
};

class ConditionFont final : public Font {
 public:
  explicit ConditionFont(ConditionPlace place) : place_(std::move(place)) {}

  Variant Bold() override { return Get().bold ? Variant(true) : Variant(); }
  void Bold(bool bold) override {
    Change([&](DifferentialFormat& format) { format.bold = bold; });
  }
  // A condition leaves the font size to the cell.
  Variant Size() override { return {}; }
  void Size(double) override { throw Refusals::FontSizeOfACondition(); }
  Variant ColorIndex() override {
    const DifferentialFormat format = Get();
    return format.color == kAutomatic ? Variant() : Variant(IndexOfColor(format.color));
  }
  void ColorIndex(std::int32_t index) override {
    const spreadsheet::Color color = ColorOfIndex(index);
    Change([&](DifferentialFormat& format) { format.color = color; });
  }
  Variant Color() override {
    const DifferentialFormat format = Get();
    return format.color == kAutomatic ? Variant() : Variant(NumberOfColor(format.color, kBlack));
  }

 private:
  DifferentialFormat Get() const {
    Document& document = place_.block.document();
    return document.AskAsItStands([&] { return FormatOfStyle(document.uno(), place_.Find().style); });
  }

  template <class Function>
  void Change(Function&& change) const {
    ChangeConditions(place_.block, [&] {
      const auto& document = place_.block.document().uno();
      const SheetCondition condition = place_.Find();
      DifferentialFormat format = FormatOfStyle(document, condition.style);
      change(format);
      SheetConditions::SetStyle(condition, StyleOfFormat(document, format));
    });
  }

  ConditionPlace place_;
};

class FormatConditionObject final : public FormatCondition {
 public:
  explicit FormatConditionObject(ConditionPlace place) : place_(std::move(place)) {}

  XlFormatConditionOperator Operator() override { return Get().Operator(); }
  std::string Formula1() override { return "=" + Get().formula; }
  std::shared_ptr<host::excel::Font> Font() override { return std::make_shared<ConditionFont>(place_); }

 private:
  SheetCondition Get() const {
    return place_.block.document().AskAsItStands([&] { return place_.Find(); });
  }

  ConditionPlace place_;
};

}  // namespace

std::int32_t FormatConditionsObject::Count() {
  return block_.document().AskAsItStands(
      [&] { return static_cast<std::int32_t>(SheetConditions(block_.sheet).Touching(block_.area).size()); });
}

FormatConditionsObject::ConditionPtr FormatConditionsObject::Item(std::int32_t index) {
  if (index < 1 || index > Count()) throw Errors::SubscriptOutOfRange();
  return std::make_shared<FormatConditionObject>(ConditionPlace{block_, static_cast<std::size_t>(index) - 1});
}

FormatConditionsObject::ConditionPtr FormatConditionsObject::Add(XlFormatConditionType type,
                                                                 XlFormatConditionOperator op,
                                                                 std::string_view formula1) {
  CheckComparison(type, op);
  const std::string number = NumberInFormula(formula1);
  ChangeConditions(block_, [&] {
    SheetConditions(block_.sheet).Add(block_.area, op, number, StyleOfFormat(block_.document().uno(), {}));
  });
  return std::make_shared<FormatConditionObject>(
      ConditionPlace{block_, static_cast<std::size_t>(Count()) - 1});
}

void FormatConditionsObject::Delete() {
  ChangeConditions(block_, [&] { SheetConditions(block_.sheet).Clear(block_.area); });
}

}  // namespace mirelo::calc
