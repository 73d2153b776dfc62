#pragma once

#include <cstdint>
#include <utility>

#include "host/excel/border.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/line_kind.h"
#include "spreadsheet/refusals.h"
#include "spreadsheet/style.h"

namespace mirelo::spreadsheet {

// The border of cells, over `Lines`: those along an edge or between the cells, as the spreadsheet keeps them.
//
//   Common(get)      what get(const BorderLine&) gives when it is the same for all lines, else an empty
//   variant Change(change)   changes each line by change(BorderLine&)
template <class Lines>
class BorderObject final : public host::excel::Border {
 public:
  explicit BorderObject(Lines lines) : lines_(std::move(lines)) {}

  Variant LineStyle() override {
    return lines_.Common([](const BorderLine& line) { return KindOf(line).style; });
  }

  void LineStyle(std::int32_t style) override {
    if (style == host::excel::xlLineStyleNone) return lines_.Change([](BorderLine& line) { line = {}; });
    const std::uint8_t thinnest = ThinnestLine(style);
    if (thinnest == 0) throw Refusals::NotALineStyle();
    lines_.Change([&](BorderLine& line) {
      const std::uint8_t as_heavy = line.line == 0 ? thinnest : LineOf(style, KindOf(line).weight);
      line.line = as_heavy != 0 ? as_heavy : thinnest;
    });
  }

  Variant Weight() override {
    return lines_.Common([](const BorderLine& line) { return KindOf(line).weight; });
  }

  void Weight(std::int32_t weight) override {
    const std::uint8_t continuous = LineOf(host::excel::xlContinuous, weight);
    if (continuous == 0) throw Refusals::NotALineWeight();
    lines_.Change([&](BorderLine& line) {
      const std::uint8_t of_style = LineOf(KindOf(line).style, weight);
      line.line = of_style != 0 ? of_style : continuous;
    });
  }

  Variant ColorIndex() override {
    return lines_.Common([](const BorderLine& line) {
      return line.line == 0 ? std::int32_t{host::excel::xlColorIndexNone} : IndexOfColor(line.color);
    });
  }

  void ColorIndex(std::int32_t index) override {
    if (index == host::excel::xlColorIndexNone) return LineStyle(host::excel::xlLineStyleNone);
    const Color color = ColorOfIndex(index);
    const std::uint8_t thin = LineOf(host::excel::xlContinuous, host::excel::xlThin);
    lines_.Change([&](BorderLine& line) { line = {line.line != 0 ? line.line : thin, color}; });
  }

 private:
  static const LineKind& KindOf(const BorderLine& line) { return kLineKinds[line.line]; }

  Lines lines_;
};

}  // namespace mirelo::spreadsheet
