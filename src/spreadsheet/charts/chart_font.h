#pragma once

#include <cstdint>
#include <utility>

#include "host/excel/font.h"
#include "spreadsheet/charts/chart_place.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/letter_size.h"

namespace mirelo::spreadsheet {

// The letters of a chart's part: of its title, or along an axis.
template <class T>
struct ChartLetters {
  ChartPart<T> part;
  bool T::*bold;
  double T::*size;
  Color T::*color;
};

template <class T>
class ChartFont final : public host::excel::Font {
 public:
  explicit ChartFont(ChartLetters<T> letters) : letters_(std::move(letters)) {}

  Variant Bold() override { return letters_.part.Get().*letters_.bold; }
  void Bold(bool bold) override { Set(letters_.bold, bold); }
  Variant Size() override { return letters_.part.Get().*letters_.size; }
  void Size(double points) override { Set(letters_.size, CheckedLetterSize(points)); }
  Variant ColorIndex() override { return IndexOfColor(letters_.part.Get().*letters_.color); }
  void ColorIndex(std::int32_t index) override { Set(letters_.color, ColorOfIndex(index)); }
  Variant Color() override { return NumberOfColor(letters_.part.Get().*letters_.color, kBlack); }

 private:
  template <class Value>
  void Set(Value T::*member, Value value) {
    letters_.part.Change([&](T& part) { part.*member = value; });
  }

  ChartLetters<T> letters_;
};

}  // namespace mirelo::spreadsheet
