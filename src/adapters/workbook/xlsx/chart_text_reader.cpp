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
constexpr std::string_view kLetterStyles = "italic, underlined and other letters";
constexpr std::string_view kWithin = "formats within the title";
constexpr std::string_view kTurned = "the direction of texts";
constexpr std::string_view kTitlePlace = "how the title's place is told";

constexpr double kStandardTitle = 18;
constexpr double kTitleToText = 1.2;  // how much larger its letters are than those of the whole chart

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
    const LetterProperties letters = PropertiesOfText(Child(node, "txPr"));
    title.size = letters.size.value_or(title.size);
    title.bold = letters.bold.value_or(title.bold);
    if (letters.color != kAutomatic) title.color = letters.color;
  }
  ReadPlace(Child(Child(node, "layout"), "manualLayout"), place, title);
  losses_.AddIf(Flag(Child(node, "overlay"), "val", false), "how the title lies over the plot");

  const pugi::xml_node shape = Child(node, "spPr");
  const PointColor ground = shapes_.PlainFill(shape);
  title.ground = ground.look;
  title.interior = ground.color;
  title.border = shapes_.Line(shape);
  title.shadow = shapes_.Shadow(shape);
  return title;
}

void ChartTextReader::ReadText(pugi::xml_node rich, ChartTitle& title) {
  const LetterProperties of_text = PropertiesOfText(rich);
  std::optional<LetterProperties> first;
  title.text.clear();
  bool is_first_line = true;
  ForEachChild(rich, "p", [&](pugi::xml_node paragraph) {
    if (!is_first_line) title.text += '\n';
    is_first_line = false;
    for (const pugi::xml_node piece : paragraph.children()) {
      if (IsNamed(piece.name(), "br")) title.text += '\n';
      if (!IsNamed(piece.name(), "r") && !IsNamed(piece.name(), "fld")) continue;
      title.text += UnescapeText(Text(Child(piece, "t")));
      const LetterProperties letters = PropertiesOf(Child(piece, "rPr"));
      if (!first) first = letters;
      losses_.AddIf(letters != *first, kWithin);
    }
  });
  const LetterProperties letters = first.value_or(LetterProperties());
  title.size = letters.size ? *letters.size : of_text.size.value_or(title.size);
  title.bold = letters.bold ? *letters.bold : of_text.bold.value_or(title.bold);
  if (of_text.color != kAutomatic) title.color = of_text.color;
  if (letters.color != kAutomatic) title.color = letters.color;
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

void ChartTextReader::Letters(pugi::xml_node text, ChartAxis& axis) {
  const LetterProperties letters = PropertiesOfText(text);
  axis.scales = false;
  axis.label_size = letters.size ? *letters.size : standard_.size.value_or(axis.label_size);
  axis.label_bold = letters.bold ? *letters.bold : standard_.bold.value_or(axis.label_bold);
  axis.label_color = letters.color != kAutomatic ? letters.color : standard_.color;
}

ChartTextReader::LetterProperties ChartTextReader::PropertiesOfText(pugi::xml_node text) {
  const std::string_view turn = Attribute(Child(text, "bodyPr"), "rot");
  // The first is how other programs say that they choose.
  losses_.AddIf(!turn.empty() && turn != "-60000000" && turn != "0", kTurned);
  return PropertiesOf(Child(Child(Child(text, "p"), "pPr"), "defRPr"));
}

ChartTextReader::LetterProperties ChartTextReader::PropertiesOf(pugi::xml_node properties) {
  LetterProperties letters;
  if (const auto size = Number<std::int32_t>(properties, "sz"); size && *size > 0)
    letters.size = std::clamp(*size / kSizesPerPoint, kLeastLetters, kGreatestLetters);
  if (HasAttribute(properties, "b")) letters.bold = Flag(properties, "b", false);
  letters.color = shapes_.LetterColor(properties);
  losses_.AddIf(Flag(properties, "i", false) || IsTold(properties, "u", "none") ||
                    IsTold(properties, "strike", "noStrike") || IsTold(properties, "cap", "none") ||
                    IsTold(properties, "baseline", "0"),
                kLetterStyles);
  const std::string_view font = Attribute(Child(properties, "latin"), "typeface");
  losses_.AddIf(!font.empty() && !font.starts_with('+'), kFonts);
  return letters;
}

}  // namespace mirelo::workbook
