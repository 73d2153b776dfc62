#include "adapters/workbook/xlsx/shape_properties_reader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <utility>
#include <vector>

#include "adapters/workbook/xlsx/chart_names.h"
#include "adapters/workbook/xlsx/gradients.h"
#include "adapters/workbook/xlsx/style_names.h"
#include "adapters/workbook/xlsx/xml_part.h"

namespace mirelo::workbook {

namespace {

constexpr std::string_view kColors = "shades and transparency of colours";
constexpr std::string_view kFills = "patterns and pictures as fills";
constexpr std::string_view kGradients = "gradients other than of two colours";
constexpr std::string_view kWidths = "widths of lines";
constexpr std::string_view kDashes = "kinds of dashes";
constexpr std::string_view kArrows = "heads of lines";
constexpr std::string_view kEffects = "shadows and other effects";

constexpr std::size_t kMostStops = 3;

// The fill of a shape or line; null when it has none of its own.
pugi::xml_node FillOf(pugi::xml_node shape) {
  for (const pugi::xml_node child : shape.children()) {
    const std::string_view name = LocalName(child);
    if (name == "noFill" || name.ends_with("Fill")) return child;
  }
  return {};
}

bool IsNone(pugi::xml_node fill) { return IsNamed(fill.name(), "noFill"); }
bool IsSolid(pugi::xml_node fill) { return IsNamed(fill.name(), "solidFill"); }
bool IsGradient(pugi::xml_node fill) { return IsNamed(fill.name(), "gradFill"); }

pugi::xml_node EffectsOf(pugi::xml_node shape) {
  const pugi::xml_node effects = Child(shape, "effectLst");
  return effects ? effects : Child(shape, "effectDag");
}

// The weight of the width that comes nearest.
std::int32_t WeightOf(std::int64_t width) {
  const auto distance = [&](const auto& entry) { return std::abs(entry.first - width); };
  return std::min_element(kLineWidths.begin(), kLineWidths.end(),
                          [&](const auto& a, const auto& b) { return distance(a) < distance(b); })
      ->second;
}

bool IsOurWidth(std::int64_t width) {
  return std::any_of(kLineWidths.begin(), kLineWidths.end(),
                     [&](const auto& entry) { return entry.first == width; });
}

}  // namespace

ChartFill ShapePropertiesReader::Fill(pugi::xml_node shape) const {
  const pugi::xml_node fill = FillOf(shape);
  ChartFill read;
  if (!fill) return read;
  if (IsGradient(fill)) return Gradient(fill);
  read.look = IsNone(fill) ? Look::None : Look::Own;
  if (read.look == Look::Own) read.fore = FillColor(fill);
  return read;
}

PointColor ShapePropertiesReader::PlainFill(pugi::xml_node shape) const {
  const pugi::xml_node fill = FillOf(shape);
  if (!fill) return {};
  if (IsNone(fill)) return {Look::None, kAutomatic};
  losses_.AddIf(IsGradient(fill), kGradients);
  return {Look::Own, FillColor(fill)};
}

ChartLine ShapePropertiesReader::Line(pugi::xml_node shape) const {
  const pugi::xml_node element = Child(shape, "ln");
  const pugi::xml_node fill = FillOf(element);
  ChartLine line;
  if (!element || (!element.first_attribute() && !element.first_child())) return line;
  line.look = IsNone(fill) ? Look::None : Look::Own;
  if (line.look == Look::None) return line;
  if (fill) line.color = LineColor(fill);
  if (const auto width = Number<std::int64_t>(element, "w"); width && *width >= 0) {
    line.weight = WeightOf(*width);
    losses_.AddIf(!IsOurWidth(*width), kWidths);
  }
  const pugi::xml_node dash = Child(element, "prstDash");
  if (dash) {
    const std::string_view word = Attribute(dash, "val");
    line.style = NumberOf(kDashNames, word).value_or(host::excel::xlContinuous);
    losses_.AddIf(WordOf(kDashNames, line.style) != word, kDashes);
  }
  losses_.AddIf(static_cast<bool>(Child(element, "custDash")), kDashes);
  if (Attribute(element, "cmpd") == "dbl") line.style = host::excel::xlDouble;
  losses_.AddIf(Child(element, "headEnd").first_attribute() || Child(element, "tailEnd").first_attribute(),
                kArrows);
  return line;
}

PointColor ShapePropertiesReader::Edge(pugi::xml_node shape) const {
  const pugi::xml_node element = Child(shape, "ln");
  const auto width = Number<std::int64_t>(element, "w");
  losses_.AddIf(width && *width != kEmuPerPixel, kWidths);
  losses_.AddIf(Child(element, "prstDash") && Attribute(Child(element, "prstDash"), "val") != "solid",
                kDashes);
  return PlainFill(element);
}

bool ShapePropertiesReader::Shadow(pugi::xml_node shape) const {
  const pugi::xml_node effects = EffectsOf(shape);
  bool has_shadow = false;
  for (const pugi::xml_node effect : effects.children()) {
    if (effect.type() != pugi::node_element) continue;
    if (IsNamed(effect.name(), "outerShdw")) {
      has_shadow = true;
    } else {
      losses_.Add(kEffects);
    }
  }
  losses_.AddIf(Child(shape, "scene3d") || Child(shape, "sp3d").first_child(), kEffects);
  return has_shadow;
}

Color ShapePropertiesReader::FontColor(pugi::xml_node properties) const {
  const pugi::xml_node fill = FillOf(properties);
  return fill && !IsNone(fill) ? LineColor(fill) : kAutomatic;
}

void ShapePropertiesReader::Refuse(pugi::xml_node shape, std::string_view what) const {
  losses_.AddIf(FillOf(shape) || EffectsOf(shape).first_child(), what);
  RefuseLine(shape, what);
}

void ShapePropertiesReader::RefuseLine(pugi::xml_node shape, std::string_view what) const {
  const pugi::xml_node line = Child(shape, "ln");
  losses_.AddIf(line.first_attribute() || line.first_child(), what);
}

void ShapePropertiesReader::RefuseEffects(pugi::xml_node shape) const {
  losses_.AddIf(Shadow(shape), kEffects);
}

Color ShapePropertiesReader::FillColor(pugi::xml_node fill) const {
  if (IsGradient(fill)) {
    const auto first = ColorIn(Child(Child(fill, "gsLst"), "gs"));
    return first ? first->color : kAutomatic;
  }
  losses_.AddIf(!IsSolid(fill), kFills);
  const auto drawn = ColorIn(IsSolid(fill) ? fill : Child(fill, "fgClr"));
  return drawn && !drawn->is_window ? drawn->color : kAutomatic;
}

Color ShapePropertiesReader::LineColor(pugi::xml_node fill) const {
  losses_.AddIf(IsGradient(fill), kGradients);
  losses_.AddIf(!IsSolid(fill) && !IsGradient(fill), kFills);
  const auto drawn = ColorIn(fill);
  return drawn ? drawn->color : kAutomatic;
}

std::optional<DrawingColor> ShapePropertiesReader::ColorIn(pugi::xml_node parent) const {
  const auto drawn = colors_.ReadDrawn(parent);
  losses_.AddIf(drawn && !drawn->is_exact, kColors);
  return drawn;
}

// A gradient that is not one of two colours from edge to edge becomes the one that comes near it.
ChartFill ShapePropertiesReader::Gradient(pugi::xml_node gradient) const {
  std::vector<Color> colors;
  bool is_even = true;
  ForEachChild(Child(gradient, "gsLst"), "gs", [&](pugi::xml_node stop) {
    if (colors.size() > kMostStops) return;
    const auto drawn = ColorIn(stop);
    colors.push_back(drawn && !drawn->is_window ? drawn->color : kAutomatic);
    const std::int32_t place = Number<std::int32_t>(stop, "pos").value_or(-1);
    is_even = is_even && (place == 0 || place == kWholeGradient / 2 || place == kWholeGradient);
  });
  const bool is_there_and_back = colors.size() == kMostStops && colors.front() == colors.back();
  const auto kind =
      KindOf(Number<std::int32_t>(Child(gradient, "lin"), "ang").value_or(-1), is_there_and_back);
  losses_.AddIf(!kind || !is_even || (colors.size() != 2 && !is_there_and_back), kGradients);
  if (colors.empty()) colors.push_back(kAutomatic);

  ChartFill fill;
  fill.look = Look::Own;
  fill.gradient = kind ? kind->style : std::uint8_t{1};
  fill.variant = kind ? kind->variant : std::uint8_t{1};
  fill.fore = colors.front();
  fill.back = is_there_and_back ? colors[1] : colors.back();
  if (HasForeInMiddle(fill.variant)) std::swap(fill.fore, fill.back);
  return fill;
}

}  // namespace mirelo::workbook
