#pragma once

#include <cstdint>
#include <string_view>

#include "automation/variant.h"

namespace mirelo::host::excel {

// The lines along one edge of a range, or between its cells. A line that two cells share is one line,
// whichever of them it is read from or set on. Properties give an empty variant where the lines differ.
//
// It may also be a line of a chart. Such a line can have any weight in any style. Until somebody sets them,
// its style and colour read as automatic; setting xlLineStyleAutomatic brings that back.
class Border : public Object {
 public:
  std::string_view TypeName() const override { return "Border"; }

  // An XlLineStyle; error 1004 for other numbers. xlLineStyleNone takes the line away. Where there was no
  // line, setting a style draws one, thin and of automatic colour; a line that was there keeps its colour,
  // and its weight where the new style has it.
  virtual Variant LineStyle() = 0;
  virtual void LineStyle(std::int32_t style) = 0;

  // An XlBorderWeight; error 1004 for other numbers. xlThin where there is no line. A weight that the line's
  // style does not have makes the line continuous.
  virtual Variant Weight() = 0;
  virtual void Weight(std::int32_t weight) = 0;

  // 1 to 56 of the palette, xlColorIndexAutomatic, or xlColorIndexNone where there is no line; error 1004 for
  // other numbers, but 0 is taken as automatic. Setting a colour where there is no line draws a thin one;
  // xlColorIndexNone takes the line away. A colour outside the palette reads as the nearest of it.
  virtual Variant ColorIndex() = 0;
  virtual void ColorIndex(std::int32_t index) = 0;
};

}  // namespace mirelo::host::excel
