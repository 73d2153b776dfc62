#pragma once

#include <cstdint>
#include <utility>

#include "adapters/workbook/objects/chart_place.h"
#include "adapters/workbook/rules.h"
#include "host/excel/font.h"
#include "spreadsheet/color_index.h"
#include "spreadsheet/letter_size.h"

namespace mirelo::workbook {

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

  Variant Bold() override { return letters_.part().*letters_.bold; }
  void Bold(bool bold) override { letters_.part().*letters_.bold = bold; }
  Variant Size() override { return letters_.part().*letters_.size; }
  void Size(double points) override { letters_.part().*letters_.size = CheckedLetterSize(points); }
  Variant ColorIndex() override { return IndexOfColor(letters_.part().*letters_.color); }
  void ColorIndex(std::int32_t index) override { letters_.part().*letters_.color = ColorOfIndex(index); }
  Variant Color() override { return NumberOfColor(letters_.part().*letters_.color, kBlack); }

 private:
  ChartLetters<T> letters_;
};

}  // namespace mirelo::workbook
