#pragma once

#include <optional>
#include <pugixml.hpp>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/shape_properties_reader.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::workbook {

// Reads the texts of a chart, and their fonts.
class ChartTextReader {
 public:
  ChartTextReader(const ShapePropertiesReader& shapes, ChartLosses& losses)
      : shapes_(shapes), losses_(losses) {}

  // Reads the chart's own element "txPr", which may be null: what it says of the font holds for each text
  // that says nothing else. To be called before the others.
  void ReadStandard(pugi::xml_node text);

  // The title of a chart of this place.
  ChartTitle Title(pugi::xml_node node, const ChartBox& place);
  // The font of an axis's labels.
  void ReadAxisFont(pugi::xml_node text, ChartAxis& axis);

 private:
  struct TextProperties {
    std::optional<double> size;
    std::optional<bool> bold;
    Color color = kAutomatic;
    friend bool operator==(const TextProperties&, const TextProperties&) = default;
  };
  TextProperties PropertiesOf(pugi::xml_node properties);
  // What the first paragraph says about its font.
  TextProperties PropertiesOfText(pugi::xml_node text);
  void ReadText(pugi::xml_node rich, ChartTitle& title);
  void ReadPlace(pugi::xml_node layout, const ChartBox& chart, ChartTitle& title);

  const ShapePropertiesReader& shapes_;
  ChartLosses& losses_;
  TextProperties standard_;
};

// A share of a length, such as charts tell places by.
double PartOf(double length, double share);

}  // namespace mirelo::workbook
