#pragma once

#include <cstdint>
#include <utility>

#include "host/excel/font.h"
#include "spreadsheet/charts/chart_place.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/font_size.h"

namespace mirelo::spreadsheet {

// The font of a chart's part: of its title, or along an axis.
template <class T>
struct ChartFontMembers {
  ChartPart<T> part;
  bool T::*bold;
  double T::*size;
  Color T::*color;
};

template <class T>
class ChartFont final : public host::excel::Font {
 public:
  explicit ChartFont(ChartFontMembers<T> font) : font_(std::move(font)) {}

  Variant Bold() override { return font_.part.Get().*font_.bold; }
  void Bold(bool bold) override { Set(font_.bold, bold); }
  Variant Size() override { return font_.part.Get().*font_.size; }
  void Size(double points) override { Set(font_.size, CheckedFontSize(points)); }
  Variant ColorIndex() override { return IndexOfColor(font_.part.Get().*font_.color); }
  void ColorIndex(std::int32_t index) override { Set(font_.color, ColorOfIndex(index)); }
  Variant Color() override { return NumberOfColor(font_.part.Get().*font_.color, kBlack); }

 private:
  template <class Value>
  void Set(Value T::*member, Value value) {
    font_.part.Change([&](T& part) { part.*member = value; });
  }

  ChartFontMembers<T> font_;
};

}  // namespace mirelo::spreadsheet
