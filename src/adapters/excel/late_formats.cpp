#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/excel/late.h"
#include "automation/variant.h"
#include "host/excel/border.h"
#include "host/excel/display_format.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"

namespace mirelo::excel {

namespace {

class LateFont : public LateOf<host::excel::Font> {
 public:
  using LateOf::LateOf;

  Variant Bold() override { return Get("Bold"); }
  void Bold(bool bold) override { Let("Bold", bold); }
  Variant Size() override { return Get("Size"); }
  void Size(double points) override { Let("Size", points); }
  Variant ColorIndex() override { return Get("ColorIndex"); }
  void ColorIndex(std::int32_t index) override { Let("ColorIndex", index); }
  Variant Color() override { return Get("Color"); }
};

class LateInterior : public LateOf<host::excel::Interior> {
 public:
  using LateOf::LateOf;

  Variant ColorIndex() override { return Get("ColorIndex"); }
  void ColorIndex(std::int32_t index) override { Let("ColorIndex", index); }
  Variant Color() override { return Get("Color"); }
  Variant PatternColorIndex() override { return Get("PatternColorIndex"); }
  void PatternColorIndex(std::int32_t index) override { Let("PatternColorIndex", index); }
  Variant Pattern() override { return Get("Pattern"); }
  void Pattern(std::int32_t pattern) override { Let("Pattern", pattern); }
};

class LateBorder : public LateOf<host::excel::Border> {
 public:
  using LateOf::LateOf;

  Variant LineStyle() override { return Get("LineStyle"); }
  void LineStyle(std::int32_t style) override { Let("LineStyle", style); }
  Variant Weight() override { return Get("Weight"); }
  void Weight(std::int32_t weight) override { Let("Weight", weight); }
  Variant ColorIndex() override { return Get("ColorIndex"); }
  void ColorIndex(std::int32_t index) override { Let("ColorIndex", index); }
};

class LateFormatCondition : public LateOf<host::excel::FormatCondition> {
 public:
  using LateOf::LateOf;

  host::excel::XlFormatConditionOperator Operator() override { return Get("Operator"); }
  std::string Formula1() override { return Get("Formula1"); }
  std::shared_ptr<host::excel::Font> Font() override { return Get("Font"); }
};

class LateFormatConditions : public LateOf<host::excel::FormatConditions> {
 public:
  using LateOf::LateOf;

  std::int32_t Count() override { return Get("Count"); }
  std::shared_ptr<host::excel::FormatCondition> Item(std::int32_t index) override {
    return Get("Item", index);
  }
  std::shared_ptr<host::excel::FormatCondition> Add(host::excel::XlFormatConditionType type,
                                                    host::excel::XlFormatConditionOperator op,
                                                    std::string_view formula1) override {
    return Get("Add", type, op, formula1);
  }
  void Delete() override { Get("Delete"); }
};

class LateDisplayFormat : public LateOf<host::excel::DisplayFormat> {
 public:
  using LateOf::LateOf;

  std::shared_ptr<host::excel::Font> Font() override { return Get("Font"); }
  std::shared_ptr<host::excel::Interior> Interior() override { return Get("Interior"); }
};

}  // namespace

template <>
std::shared_ptr<host::excel::Font> As(const Variant& result) {
  return LateObject<LateFont>(result);
}
template <>
std::shared_ptr<host::excel::Interior> As(const Variant& result) {
  return LateObject<LateInterior>(result);
}
template <>
std::shared_ptr<host::excel::Border> As(const Variant& result) {
  return LateObject<LateBorder>(result);
}
template <>
std::shared_ptr<host::excel::FormatCondition> As(const Variant& result) {
  return LateObject<LateFormatCondition>(result);
}
template <>
std::shared_ptr<host::excel::FormatConditions> As(const Variant& result) {
  return LateObject<LateFormatConditions>(result);
}
template <>
std::shared_ptr<host::excel::DisplayFormat> As(const Variant& result) {
  return LateObject<LateDisplayFormat>(result);
}

}  // namespace mirelo::excel
