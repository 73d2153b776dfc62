#pragma once

#include <optional>
#include <pugixml.hpp>
#include <string_view>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/chart_losses.h"
#include "adapters/workbook/xlsx/color_reader.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::workbook {

// Reads the shape properties of a chart's parts: its elements "spPr" with their fill, line and effects. A
// null element stands for a shape that is as the chart chooses. What cannot be kept is told to `losses`.
class ShapePropertiesReader {
 public:
  ShapePropertiesReader(const ColorReader& colors, ChartLosses& losses) : colors_(colors), losses_(losses) {}

  ChartFill Fill(pugi::xml_node shape) const;
  // A fill of which one colour is kept.
  PointColor PlainFill(pugi::xml_node shape) const;
  ChartLine Line(pugi::xml_node shape) const;
  // A line of which only the colour is kept.
  PointColor Edge(pugi::xml_node shape) const;
  bool Shadow(pugi::xml_node shape) const;

  // The colour of a font: that of the fill in its properties.
  Color FontColor(pugi::xml_node properties) const;

  // For parts of whose shape nothing is kept: reports `what` as lost if the shape has any look of its own.
  void Refuse(pugi::xml_node shape, std::string_view what) const;
  // Reports the line of `what` as lost, if the shape has one.
  void RefuseLine(pugi::xml_node shape, std::string_view what) const;
  // Reports its shadow and the like as lost.
  void RefuseEffects(pugi::xml_node shape) const;

 private:
  // The colour of the solid fill, pattern or gradient that an element holds; automatic when it is the
  // desktop's colour of windows.
  Color FillColor(pugi::xml_node fill) const;
  Color LineColor(pugi::xml_node fill) const;
  std::optional<DrawingColor> ColorIn(pugi::xml_node parent) const;
  ChartFill Gradient(pugi::xml_node gradient) const;

  const ColorReader& colors_;
  ChartLosses& losses_;
};

}  // namespace mirelo::workbook
