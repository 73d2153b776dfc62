#include "adapters/calc/objects/display_format_object.h"

#include <charconv>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/sheet/FormulaResult.hpp>
#include <com/sun/star/table/CellContentType.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/calc/objects/differential_formats.h"
#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/sheet_conditions.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/refusals.h"

namespace mirelo::calc {

using namespace host::excel;
using namespace spreadsheet;

namespace {

// Nothing for a text, which compares with no number.
std::optional<double> NumberIn(const Reference<css::table::XCell>& cell) {
  using css::sheet::FormulaResult::STRING;
  const auto type = cell->getType();
  const bool is_text = type == css::table::CellContentType_TEXT ||
                       (type == css::table::CellContentType_FORMULA &&
                        Properties(cell).Get("FormulaResultType2", sal_Int32{0}) == STRING);
  return is_text ? std::nullopt : std::optional(cell->getValue());
}

bool Meets(const Reference<css::table::XCell>& cell, const SheetCondition& condition) {
  if (cell->getError() != 0) return false;
  double other = 0;
  const char* end = condition.formula.data() + condition.formula.size();
  if (std::from_chars(condition.formula.data(), end, other).ptr != end) return false;
  const auto number = NumberIn(cell);
  const XlFormatConditionOperator op = condition.Operator();
  if (!number) return op == xlNotEqual;
  switch (op) {
    case xlEqual:
      return *number == other;
    case xlNotEqual:
      return *number != other;
    case xlGreater:
      return *number > other;
    case xlLess:
      return *number < other;
    case xlGreaterEqual:
      return *number >= other;
    case xlLessEqual:
      return *number <= other;
    case xlBetween:
    case xlNotBetween:
      break;
  }
  return false;
}

// The name of the style in which a condition shows the cell; empty where none does.
std::string StyleShown(const CellBlock& cell) {
  const auto value = cell.FirstCell();
  for (const SheetCondition& condition : SheetConditions(cell.sheet).Touching(cell.area)) {
    if (condition.ComparesValues() && Meets(value, condition)) return condition.style;
  }
  return "";
}

template <class Value>
Value Shown(const CellBlock& cell, std::string_view property, Value otherwise) {
  Document& document = cell.document();
  return document.Ask([&] {
    if (const std::string style = StyleShown(cell); !style.empty()) {
      Value value = otherwise;
      if (const auto set = SetByStyle(document.uno(), style, property); set && (*set >>= value)) return value;
    }
    return cell.Properties().Get(property, otherwise);
  });
}

class ShownFont final : public Font {
 public:
  explicit ShownFont(CellBlock cell) : cell_(std::move(cell)) {}

  Variant Bold() override {
    namespace weights = css::awt::FontWeight;
    return Shown(cell_, "CharWeight", float{weights::NORMAL}) > weights::NORMAL;
  }
  void Bold(bool) override { throw Refusals::DisplayFormatSet(); }
  Variant Size() override { return double{Shown(cell_, "CharHeight", 0.0F)}; }
  void Size(double) override { throw Refusals::DisplayFormatSet(); }
  Variant ColorIndex() override { return IndexOfColor(FontColor()); }
  void ColorIndex(std::int32_t) override { throw Refusals::DisplayFormatSet(); }
  Variant Color() override { return NumberOfColor(FontColor(), kBlack); }

 private:
  spreadsheet::Color FontColor() const { return Shown(cell_, "CharColor", kAutomatic); }

  CellBlock cell_;
};

class ShownInterior final : public Interior {
 public:
  explicit ShownInterior(CellBlock cell) : cell_(std::move(cell)) {}

  Variant ColorIndex() override {
    const spreadsheet::Color background = BackgroundColor();
    return background == kAutomatic ? std::int32_t{xlColorIndexNone} : IndexOfColor(background);
  }
  void ColorIndex(std::int32_t) override { throw Refusals::DisplayFormatSet(); }
  Variant Color() override { return NumberOfColor(BackgroundColor(), kWhite); }
  Variant PatternColorIndex() override { return std::int32_t{xlColorIndexAutomatic}; }
  void PatternColorIndex(std::int32_t) override { throw Refusals::DisplayFormatSet(); }
  Variant Pattern() override {
    return BackgroundColor() == kAutomatic ? std::int32_t{xlPatternNone} : std::int32_t{xlPatternSolid};
  }
  void Pattern(std::int32_t) override { throw Refusals::DisplayFormatSet(); }

 private:
  spreadsheet::Color BackgroundColor() const { return Shown(cell_, "CellBackColor", kAutomatic); }

  CellBlock cell_;
};

}  // namespace

std::shared_ptr<Font> DisplayFormatObject::Font() { return std::make_shared<ShownFont>(cell_); }
std::shared_ptr<Interior> DisplayFormatObject::Interior() { return std::make_shared<ShownInterior>(cell_); }

}  // namespace mirelo::calc
