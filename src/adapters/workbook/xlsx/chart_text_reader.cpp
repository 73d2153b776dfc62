#include "adapters/workbook/xlsx/chart_text_reader.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "adapters/workbook/xlsx/chart_names.h"
#include "adapters/workbook/xlsx/text_escapes.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/limits.h"

namespace mirelo::workbook {

namespace {

constexpr std::string_view kFonts = "fonts";
constexpr std::string_view kFontStyles = "italic, underlined and other letters";
constexpr std::string_view kWithin = "formats within the title";
constexpr std::string_view kTurned = "the direction of texts";
constexpr std::string_view kTitlePlace = "how the title's place is told";

constexpr double kStandardTitle = 18;
constexpr double kTitleToText = 1.2;  // how much larger its font is than that of the whole chart

bool IsTold(pugi::xml_node properties, std::string_view name, std::string_view plain) {
  const std::string_view value = Attribute(properties, name);
  return !value.empty() && value != plain;
}

}  // namespace

double PartOf(double length, double share) {
  constexpr double kSteps = 1e9;  // of a point, which undoes the division by the length
  const double part = std::round(length * share * kSteps) / kSteps;
  return std::isfinite(part) ? part : 0;
}

void ChartTextReader::ReadStandard(pugi::xml_node text) { standard_ = PropertiesOfText(text); }

ChartTitle ChartTextReader::Title(pugi::xml_node node, const ChartBox& place) {
  ChartTitle title;
  title.scales = false;
  title.size = standard_.size ? *standard_.size * kTitleToText : kStandardTitle;
  title.bold = standard_.bold.value_or(true);
  title.color = standard_.color;
  const pugi::xml_node text = Child(node, "tx");
  if (const pugi::xml_node rich = Child(text, "rich")) {
    ReadText(rich, title);
  } else {
    if (const pugi::xml_node linked = Child(text, "strRef")) {
      title.text = UnescapeText(Text(Child(Child(Child(linked, "strCache"), "pt"), "v")));
      losses_.Add("the link of the title to a cell");
    }
    const TextProperties font = PropertiesOfText(Child(node, "txPr"));
    title.size = font.size.value_or(title.size);
    title.bold = font.bold.value_or(title.bold);
    if (font.color != kAutomatic) title.color = font.color;
  }
  ReadPlace(Child(Child(node, "layout"), "manualLayout"), place, title);
  losses_.AddIf(Flag(Child(node, "overlay"), "val", false), "how the title lies over the plot");

  const pugi::xml_node shape = Child(node, "spPr");
  const PointColor fill = shapes_.PlainFill(shape);
  title.fill = fill.look;
  title.interior = fill.color;
  title.border = shapes_.Line(shape);
  title.shadow = shapes_.Shadow(shape);
  return title;
}

void ChartTextReader::ReadText(pugi::xml_node rich, ChartTitle& title) {
  const TextProperties of_text = PropertiesOfText(rich);
  std::optional<TextProperties> first;
  title.text.clear();
  bool is_first_line = true;
  ForEachChild(rich, "p", [&](pugi::xml_node paragraph) {
    if (!is_first_line) title.text += '\n';
    is_first_line = false;
    for (const pugi::xml_node piece : paragraph.children()) {
      if (IsNamed(piece.name(), "br")) title.text += '\n';
      if (!IsNamed(piece.name(), "r") && !IsNamed(piece.name(), "fld")) continue;
      title.text += UnescapeText(Text(Child(piece, "t")));
      const TextProperties font = PropertiesOf(Child(piece, "rPr"));
      if (!first) first = font;
      losses_.AddIf(font != *first, kWithin);
    }
  });
  const TextProperties font = first.value_or(TextProperties());
  title.size = font.size ? *font.size : of_text.size.value_or(title.size);
  title.bold = font.bold ? *font.bold : of_text.bold.value_or(title.bold);
  if (of_text.color != kAutomatic) title.color = of_text.color;
  if (font.color != kAutomatic) title.color = font.color;
}

void ChartTextReader::ReadPlace(pugi::xml_node layout, const ChartBox& chart, ChartTitle& title) {
  const auto read = [&](std::string_view name, std::string_view mode,
                        double length) -> std::optional<double> {
    const auto share = Number<double>(Child(layout, name), "val");
    if (!share) return std::nullopt;
    const bool is_from_edge = Attribute(Child(layout, mode), "val") == "edge";
    losses_.AddIf(!is_from_edge, kTitlePlace);
    if (!is_from_edge) return std::nullopt;
    return PartOf(length, *share);
  };
  title.left = read("x", "xMode", chart.width);
  title.top = read("y", "yMode", chart.height);
}

void ChartTextReader::ReadAxisFont(pugi::xml_node text, ChartAxis& axis) {
  const TextProperties font = PropertiesOfText(text);
  axis.scales = false;
  axis.label_size = font.size ? *font.size : standard_.size.value_or(axis.label_size);
  axis.label_bold = font.bold ? *font.bold : standard_.bold.value_or(axis.label_bold);
  axis.label_color = font.color != kAutomatic ? font.color : standard_.color;
}

ChartTextReader::TextProperties ChartTextReader::PropertiesOfText(pugi::xml_node text) {
  const std::string_view turn = Attribute(Child(text, "bodyPr"), "rot");
  // The first is how other programs say that they choose.
  losses_.AddIf(!turn.empty() && turn != "-60000000" && turn != "0", kTurned);
  return PropertiesOf(Child(Child(Child(text, "p"), "pPr"), "defRPr"));
}

ChartTextReader::TextProperties ChartTextReader::PropertiesOf(pugi::xml_node properties) {
  TextProperties font;
  if (const auto size = Number<std::int32_t>(properties, "sz"); size && *size > 0)
    font.size = std::clamp(*size / kSizesPerPoint, kLeastFontSize, kGreatestFontSize);
  if (HasAttribute(properties, "b")) font.bold = Flag(properties, "b", false);
  font.color = shapes_.FontColor(properties);
  losses_.AddIf(Flag(properties, "i", false) || IsTold(properties, "u", "none") ||
                    IsTold(properties, "strike", "noStrike") || IsTold(properties, "cap", "none") ||
                    IsTold(properties, "baseline", "0"),
                kFontStyles);
  const std::string_view typeface = Attribute(Child(properties, "latin"), "typeface");
  losses_.AddIf(!typeface.empty() && !typeface.starts_with('+'), kFonts);
  return font;
}

}  // namespace mirelo::workbook
