#include "workbook/calc_chart.h"

#include <stdexcept>

namespace mirelo::testing {

namespace {

void Load(pugi::xml_document& document, const Parts& parts, const std::string& name) {
  const auto part = parts.find(name);
  if (part == parts.end() || !document.load_string(part->second.c_str()))
    throw std::runtime_error(name + " cannot be read");
}

}  // namespace

CalcChart::CalcChart(const Parts& parts, int number) {
  const std::string folder = "Object " + std::to_string(number) + "/";
  Load(content_, parts, folder + "content.xml");
  Load(styles_, parts, folder + "styles.xml");
}

std::string CalcChart::Class() const { return Chart().attribute("chart:class").value(); }

std::string CalcChart::Title() const { return Chart().child("chart:title").child("text:p").text().get(); }

std::string CalcChart::Cells() const { return Series().attribute("chart:values-cell-range-address").value(); }

bool CalcChart::HasLegend() const { return static_cast<bool>(Chart().child("chart:legend")); }

bool CalcChart::HasAxis(std::string_view dimension) const {
  for (const pugi::xml_node axis : Plot().children("chart:axis")) {
    if (dimension == axis.attribute("chart:dimension").value())
      return Property(axis, "chart:visible") != "false";
  }
  return false;
}

std::string CalcChart::TitleProperty(const char* property) const {
  return Property(Chart().child("chart:title"), property);
}

std::string CalcChart::SeriesProperty(const char* property) const { return Property(Series(), property); }

std::string CalcChart::GridProperty(const char* property) const {
  for (const pugi::xml_node axis : Plot().children("chart:axis")) {
    if (const pugi::xml_node grid = axis.child("chart:grid")) return Property(grid, property);
  }
  return "there is no grid";
}

std::vector<std::string> CalcChart::PointProperties(const char* property) const {
  std::vector<std::string> properties;
  for (const pugi::xml_node point : Series().children("chart:data-point"))
    properties.insert(properties.end(), point.attribute("chart:repeated").as_uint(1),
                      Property(point, property));
  return properties;
}

CalcChart::Gradient CalcChart::AreaGradient() const { return GradientOf(Chart()); }

CalcChart::Gradient CalcChart::PlotGradient() const { return GradientOf(Plot().child("chart:wall")); }

pugi::xml_node CalcChart::Chart() const {
  return content_.document_element().child("office:body").child("office:chart").child("chart:chart");
}

pugi::xml_node CalcChart::Plot() const { return Chart().child("chart:plot-area"); }

pugi::xml_node CalcChart::Series() const { return Plot().child("chart:series"); }

std::string CalcChart::Property(pugi::xml_node element, const char* property) const {
  const std::string_view name = element.attribute("chart:style-name").value();
  for (const pugi::xml_node style : content_.document_element().child("office:automatic-styles").children()) {
    if (name != style.attribute("style:name").value()) continue;
    for (const pugi::xml_node group : style.children()) {
      if (const pugi::xml_attribute value = group.attribute(property)) return value.value();
    }
  }
  return "";
}

CalcChart::Gradient CalcChart::GradientOf(pugi::xml_node element) const {
  const std::string name = Property(element, "draw:fill-gradient-name");
  for (const pugi::xml_node gradient :
       styles_.document_element().child("office:styles").children("draw:gradient")) {
    if (name == gradient.attribute("draw:name").value())
      return {gradient.attribute("draw:start-color").value(), gradient.attribute("draw:end-color").value()};
  }
  return {};
}

}  // namespace mirelo::testing
