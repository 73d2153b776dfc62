#include "adapters/workbook/xlsx/chart_text_writer.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/chart_names.h"
#include "adapters/workbook/xlsx/shape_properties_writer.h"
#include "adapters/workbook/xlsx/text_escapes.h"
#include "adapters/workbook/xlsx/xml_text.h"
#include "spreadsheet/charts/chart_layout.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {

namespace {

void TellTextProperties(pugi::xml_node properties, const TextProperties& font) {
  properties.append_attribute("sz") = static_cast<std::int32_t>(std::lround(font.size * kSizesPerPoint));
  properties.append_attribute("b") = font.bold ? 1 : 0;
  if (font.color != kAutomatic) AppendSolidFill(properties, font.color);
}

void AppendBody(pugi::xml_node text) {
  text.append_child("a:bodyPr");
  text.append_child("a:lstStyle");
}

void AppendParagraph(pugi::xml_node text, std::string_view line, const TextProperties& font) {
  pugi::xml_node paragraph = text.append_child("a:p");
  TellTextProperties(paragraph.append_child("a:pPr").append_child("a:defRPr"), font);
  pugi::xml_node run = paragraph.append_child("a:r");
  TellTextProperties(run.append_child("a:rPr"), font);
  AppendText(run, "a:t", EscapeControls(CleanText(line)));
}

// The place where the title stands: one that was set beyond the chart's edge would hide it in other programs.
void AppendPlace(pugi::xml_node layout, const Chart& chart) {
  const ChartTitle& title = *chart.title;
  const ChartBox box = TitleBox(chart);
  if (!title.left && !title.top) return;
  pugi::xml_node manual = layout.append_child("c:manualLayout");
  if (title.left) AppendValue(manual, "c:xMode", "edge");
  if (title.top) AppendValue(manual, "c:yMode", "edge");
  if (title.left) AppendValue(manual, "c:x", ExactNumberText(box.left / chart.place.width));
  if (title.top) AppendValue(manual, "c:y", ExactNumberText(box.top / chart.place.height));
}

void AppendTitleShape(pugi::xml_node parent, const ChartTitle& title) {
  if (title.fill == Look::Automatic && title.border.look == Look::Automatic && !title.shadow) return;
  pugi::xml_node shape = AppendShape(parent);
  if (title.fill == Look::None) shape.append_child("a:noFill");
  if (title.fill == Look::Own) AppendSolidFill(shape, title.interior);
  AppendLine(shape, title.border);
  if (title.shadow) AppendShadow(shape);
}

}  // namespace

void AppendTextProperties(pugi::xml_node parent, const TextProperties& font) {
  pugi::xml_node text = parent.append_child("c:txPr");
  AppendBody(text);
  pugi::xml_node paragraph = text.append_child("a:p");
  TellTextProperties(paragraph.append_child("a:pPr").append_child("a:defRPr"), font);
  paragraph.append_child("a:endParaRPr").append_attribute("lang") = "en-US";
}

void AppendTitle(pugi::xml_node parent, const Chart& chart) {
  const ChartTitle& title = *chart.title;
  pugi::xml_node node = parent.append_child("c:title");
  pugi::xml_node text = node.append_child("c:tx").append_child("c:rich");
  AppendBody(text);
  for (std::string_view left = title.text;;) {
    const std::size_t end = std::min(left.find('\n'), left.size());
    AppendParagraph(text, left.substr(0, end), {title.size, title.bold, title.color});
    if (end == left.size()) break;
    left.remove_prefix(end + 1);
  }
  AppendPlace(node.append_child("c:layout"), chart);
  AppendValue(node, "c:overlay", "0");
  AppendTitleShape(node, title);
}

pugi::xml_node AppendExtension(pugi::xml_node parent) {
  pugi::xml_node extension = parent.append_child("c:extLst").append_child("c:ext");
  extension.append_attribute("uri") = kExtension;
  extension.append_attribute("xmlns:m") = kExtensionSpace;
  return extension;
}

}  // namespace mirelo::workbook
