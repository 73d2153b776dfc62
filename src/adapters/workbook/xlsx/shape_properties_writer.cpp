#include "adapters/workbook/xlsx/shape_properties_writer.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "adapters/workbook/xlsx/chart_names.h"
#include "adapters/workbook/xlsx/gradients.h"
#include "automation/hex.h"

namespace mirelo::workbook {

namespace {

void AppendColor(pugi::xml_node parent, Color color) {
  if (color == kAutomatic) {
    pugi::xml_node system = parent.append_child("a:sysClr");
    system.append_attribute("val") = "window";
    system.append_attribute("lastClr") = "FFFFFF";
  } else {
    parent.append_child("a:srgbClr").append_attribute("val") = ColorText(color).c_str();
  }
}

void AppendGradient(pugi::xml_node shape, const ChartFill& fill) {
  pugi::xml_node gradient = shape.append_child("a:gradFill");
  gradient.append_attribute("rotWithShape") = 1;
  pugi::xml_node stops = gradient.append_child("a:gsLst");
  const auto append = [&](std::int32_t place, Color color) {
    pugi::xml_node stop = stops.append_child("a:gs");
    stop.append_attribute("pos") = place;
    AppendColor(stop, color);
  };
  const bool is_fore_inside = HasForeInMiddle(fill.variant);
  const Color start = is_fore_inside ? fill.back : fill.fore;
  const Color other = is_fore_inside ? fill.fore : fill.back;
  const bool is_there_and_back = HasColorInMiddle(fill.variant);
  append(0, start);
  if (is_there_and_back) append(kWholeGradient / 2, other);
  append(kWholeGradient, is_there_and_back ? start : other);
  pugi::xml_node direction = gradient.append_child("a:lin");
  direction.append_attribute("ang") = AngleOf(fill.gradient, fill.variant);
  direction.append_attribute("scaled") = 0;
}

}  // namespace

std::string ColorText(Color color) {
  std::string text;
  for (const int shift : {16, 8, 0}) AppendHex(text, static_cast<std::uint8_t>(color >> shift & 0xFF));
  return text;
}

pugi::xml_node AppendShape(pugi::xml_node parent) { return parent.append_child("c:spPr"); }

void AppendFill(pugi::xml_node shape, const ChartFill& fill) {
  if (fill.look == Look::None) shape.append_child("a:noFill");
  if (fill.look != Look::Own) return;
  if (fill.gradient == 0) {
    AppendSolidFill(shape, fill.fore);
  } else {
    AppendGradient(shape, fill);
  }
}

void AppendFill(pugi::xml_node shape, const PointColor& color) {
  if (color.look == Look::None) shape.append_child("a:noFill");
  if (color.look == Look::Own) AppendSolidFill(shape, color.color);
}

void AppendSolidFill(pugi::xml_node shape, Color color) {
  AppendColor(shape.append_child("a:solidFill"), color);
}

void AppendLine(pugi::xml_node shape, const ChartLine& line) {
  if (line.look == Look::Automatic) return;
  pugi::xml_node element = shape.append_child("a:ln");
  if (line.look == Look::None) {
    element.append_child("a:noFill");
    return;
  }
  for (const auto& [width, weight] : kLineWidths) {
    if (weight == line.weight) element.append_attribute("w") = width;
  }
  const bool is_double = line.style == host::excel::xlDouble;
  if (is_double) element.append_attribute("cmpd") = "dbl";
  if (line.color != kAutomatic) AppendSolidFill(element, line.color);
  const std::string dash(is_double ? "solid" : WordOf(kDashNames, line.style));
  element.append_child("a:prstDash").append_attribute("val") = dash.empty() ? "solid" : dash.c_str();
}

void AppendLine(pugi::xml_node shape, const PointColor& color) {
  if (color.look == Look::Automatic) return;
  pugi::xml_node element = shape.append_child("a:ln");
  element.append_attribute("w") = kEmuPerPixel;
  AppendFill(element, color);
}

void AppendShadow(pugi::xml_node shape) {
  pugi::xml_node shadow = shape.append_child("a:effectLst").append_child("a:outerShdw");
  shadow.append_attribute("dist") = 3 * kEmuPerPixel;
  shadow.append_attribute("dir") = kRightDown;
  pugi::xml_node color = shadow.append_child("a:srgbClr");
  color.append_attribute("val") = "808080";
}

}  // namespace mirelo::workbook
