#pragma once

#include <pugixml.hpp>

#include "adapters/workbook/rules.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::workbook {

struct TextProperties {
  double size;  // points
  bool bold;
  Color color;
};

// Appends the element "txPr", which tells the font.
void AppendTextProperties(pugi::xml_node parent, const TextProperties& font);

// Appends the title that a chart has.
void AppendTitle(pugi::xml_node parent, const Chart& chart);

// Appends an extension, which other programs pass over; what stands in it has the prefix "m".
pugi::xml_node AppendExtension(pugi::xml_node parent);

}  // namespace mirelo::workbook
