#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "automation/variant.h"
#include "host/excel/constants.h"

namespace mirelo::host::excel {

class Border;

// One point of a series. What nobody set on it, it has from its series.
class Point : public Object {
 public:
  std::string_view TypeName() const override { return "Point"; }

  // The line that leads to the point; of a column its outline.
  virtual std::shared_ptr<excel::Border> Border() = 0;
  // 1 to 56 of the palette, xlColorIndexAutomatic or xlColorIndexNone; error 1004 for other numbers. Of a
  // column, which has no marker, the background is its fill.
  virtual std::int32_t MarkerBackgroundColorIndex() = 0;
  virtual void MarkerBackgroundColorIndex(std::int32_t index) = 0;
  virtual std::int32_t MarkerForegroundColorIndex() = 0;
  virtual void MarkerForegroundColorIndex(std::int32_t index) = 0;
};

class Series : public Object {
 public:
  std::string_view TypeName() const override { return "Series"; }

  // The numbers plotted, an array with lower bound 1: cells without a number are empty elements. An array
  // without elements when the cells were deleted.
  virtual Variant Values() = 0;
  // A range, whose cells are plotted from now on. Points keep their looks by their numbers. Error 1004 for
  // a range of more than one column and row, 13 for anything else.
  virtual void Values(const Variant& range) = 0;

  // The line of all points: what is set on it is set on each of them.
  virtual std::shared_ptr<excel::Border> Border() = 0;
  // An XlMarkerStyle; error 1004 for other numbers.
  virtual std::int32_t MarkerStyle() = 0;
  virtual void MarkerStyle(std::int32_t style) = 0;
  // Points, 2 to 72; error 1004 outside.
  virtual std::int32_t MarkerSize() = 0;
  virtual void MarkerSize(std::int32_t points) = 0;
  // As those of Point. Setting one sets it on all points.
  virtual std::int32_t MarkerBackgroundColorIndex() = 0;
  virtual void MarkerBackgroundColorIndex(std::int32_t index) = 0;
  virtual std::int32_t MarkerForegroundColorIndex() = 0;
  virtual void MarkerForegroundColorIndex(std::int32_t index) = 0;
  virtual bool Smooth() = 0;
  virtual void Smooth(bool on) = 0;
  virtual bool Shadow() = 0;
  virtual void Shadow(bool on) = 0;

  // Counted from 1; error 1004 outside the values.
  virtual std::shared_ptr<Point> Points(std::int32_t index) = 0;
};

}  // namespace mirelo::host::excel
