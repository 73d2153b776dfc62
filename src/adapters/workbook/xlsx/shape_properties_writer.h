#pragma once

#include <pugixml.hpp>
#include <string>

#include "adapters/workbook/rules.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::workbook {

// These append shape properties to an element "spPr". To be called in the order in which the format wants
// them: fills before lines, lines before shadows. What is automatic has no element.

// A new element "spPr" of a chart's part.
pugi::xml_node AppendShape(pugi::xml_node parent);

void AppendFill(pugi::xml_node shape, const ChartFill& fill);
void AppendFill(pugi::xml_node shape, const PointColor& color);
// One colour; an automatic one is that of windows.
void AppendSolidFill(pugi::xml_node shape, Color color);

void AppendLine(pugi::xml_node shape, const ChartLine& line);
// The edge of a marker.
void AppendLine(pugi::xml_node shape, const PointColor& color);

void AppendShadow(pugi::xml_node shape);

// Six hexadecimal digits.
std::string ColorText(Color color);

}  // namespace mirelo::workbook
