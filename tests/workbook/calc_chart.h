#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workbook/package_builder.h"

namespace mirelo::testing {

// A chart of an OpenDocument spreadsheet, as far as a comparison with the one it was made from needs it.
class CalcChart {
 public:
  // The parts of an .ods file, and the place of the chart in the order in which the file names its objects,
  // from 1.
  CalcChart(const Parts& parts, int number);

  std::string Class() const;  // "chart:line", "chart:bar"
  std::string Title() const;
  // Of the first series: "'Sheet'.D3:'Sheet'.D22".
  std::string Cells() const;
  bool HasLegend() const;
  bool HasAxis(std::string_view dimension) const;  // "x", "y"

  // Properties such as "draw:fill-color"; empty where the style does not tell them.
  std::string TitleProperty(const char* property) const;
  std::string SeriesProperty(const char* property) const;
  std::string GridProperty(const char* property) const;
  // Of each point in turn.
  std::vector<std::string> PointProperties(const char* property) const;

  // The colours at the start and the end of a gradient.
  using Gradient = std::pair<std::string, std::string>;
  Gradient AreaGradient() const;
  Gradient PlotGradient() const;

 private:
  pugi::xml_node Chart() const;
  pugi::xml_node Plot() const;
  pugi::xml_node Series() const;
  std::string Property(pugi::xml_node element, const char* property) const;
  Gradient GradientOf(pugi::xml_node element) const;

  pugi::xml_document content_;
  pugi::xml_document styles_;
};

}  // namespace mirelo::testing
