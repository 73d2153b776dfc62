#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "automation/variant.h"
#include "host/excel/constants.h"

namespace mirelo::host::excel {

class Border;
class ChartFillFormat;
class Font;
class Interior;

// The numbers or names along an axis.
class TickLabels : public Object {
 public:
  std::string_view TypeName() const override { return "TickLabels"; }

  virtual std::shared_ptr<excel::Font> Font() = 0;
  // Whether the font grows and shrinks with the chart. True at the start.
  virtual bool AutoScaleFont() = 0;
  virtual void AutoScaleFont(bool on) = 0;
};

// The lines across the plot at the marks of an axis.
class Gridlines : public Object {
 public:
  std::string_view TypeName() const override { return "Gridlines"; }

  virtual std::shared_ptr<excel::Border> Border() = 0;
};

class Axis : public Object {
 public:
  std::string_view TypeName() const override { return "Axis"; }

  // Error 1004 while the axis is off.
  virtual std::shared_ptr<excel::TickLabels> TickLabels() = 0;
  virtual bool HasMajorGridlines() = 0;
  virtual void HasMajorGridlines(bool on) = 0;
  // Error 1004 while there are none.
  virtual std::shared_ptr<Gridlines> MajorGridlines() = 0;
};

// A stretch of a text; here always the whole.
class Characters : public Object {
 public:
  std::string_view TypeName() const override { return "Characters"; }

  virtual std::string Text() = 0;
  virtual void Text(std::string_view text) = 0;
};

// Places in a chart are points from its top left corner, and nothing reaches over the chart's edge: what is
// set beyond is moved or cut back to it.
class ChartTitle : public Object {
 public:
  std::string_view TypeName() const override { return "ChartTitle"; }

  // At most 255 characters (UTF-16 units); error 1004 for more.
  virtual std::string Text() = 0;
  virtual void Text(std::string_view text) = 0;
  virtual std::shared_ptr<excel::Characters> Characters() = 0;
  virtual std::shared_ptr<excel::Font> Font() = 0;
  virtual bool AutoScaleFont() = 0;
  virtual void AutoScaleFont(bool on) = 0;
  // The title is as large as its text needs, so that setting a place may give another one.
  virtual double Left() = 0;
  virtual void Left(double points) = 0;
  virtual double Top() = 0;
  virtual void Top(double points) = 0;
  virtual bool Shadow() = 0;
  virtual void Shadow(bool on) = 0;
  virtual std::shared_ptr<excel::Border> Border() = 0;
  virtual std::shared_ptr<excel::Interior> Interior() = 0;
};

class ChartArea : public Object {
 public:
  std::string_view TypeName() const override { return "ChartArea"; }

  virtual std::shared_ptr<ChartFillFormat> Fill() = 0;
};

// Where the series are drawn, axes included. Until somebody sets its place, it takes what title and legend
// leave. Error 1004 for sizes that are not above 0.
class PlotArea : public Object {
 public:
  std::string_view TypeName() const override { return "PlotArea"; }

  virtual double Left() = 0;
  virtual void Left(double points) = 0;
  virtual double Top() = 0;
  virtual void Top(double points) = 0;
  virtual double Width() = 0;
  virtual void Width(double points) = 0;
  virtual double Height() = 0;
  virtual void Height(double points) = 0;
  virtual std::shared_ptr<excel::Border> Border() = 0;
  virtual std::shared_ptr<ChartFillFormat> Fill() = 0;
};

// One colour of a fill.
class ChartColorFormat : public Object {
 public:
  std::string_view TypeName() const override { return "ChartColorFormat"; }

  // 1 to 56 of the palette; error 1004 otherwise. A colour outside the palette reads as the nearest of it.
  virtual std::int32_t SchemeColor() = 0;
  virtual void SchemeColor(std::int32_t index) = 0;
};

class ChartFillFormat : public Object {
 public:
  std::string_view TypeName() const override { return "ChartFillFormat"; }

  // The fill runs from the fore colour to the back colour. Error 1004 for styles other than those of
  // MsoGradientStyle, and for variants outside 1 to 4: 1 starts with the fore colour, 2 with the back colour,
  // 3 and 4 put it in the middle.
  virtual void TwoColorGradient(MsoGradientStyle style, std::int32_t variant) = 0;
  virtual MsoTriState Visible() = 0;
  virtual void Visible(MsoTriState visible) = 0;
  virtual std::shared_ptr<ChartColorFormat> ForeColor() = 0;
  virtual std::shared_ptr<ChartColorFormat> BackColor() = 0;
};

}  // namespace mirelo::host::excel
