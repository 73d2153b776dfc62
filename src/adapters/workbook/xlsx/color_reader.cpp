#include "adapters/workbook/xlsx/color_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/palette.h"

namespace mirelo::workbook {

namespace {

// In the order of their indexes, which swaps the light and dark pairs of the theme's own list.
constexpr std::array<std::string_view, 12> kThemeColors{"lt1",     "dk1",     "lt2",     "dk2",
                                                        "accent1", "accent2", "accent3", "accent4",
                                                        "accent5", "accent6", "hlink",   "folHlink"};
constexpr std::size_t kThemeText = 1;
// Other names of some of them.
constexpr std::array<std::pair<std::string_view, std::string_view>, 4> kThemeRoles{
    {{"bg1", "lt1"}, {"tx1", "dk1"}, {"bg2", "lt2"}, {"tx2", "dk2"}}};
// The commonest of those that drawings know by name.
constexpr std::array<std::pair<std::string_view, Color>, 9> kNamedColors{{{"black", 0x000000},
                                                                          {"white", 0xFFFFFF},
                                                                          {"red", 0xFF0000},
                                                                          {"green", 0x008000},
                                                                          {"blue", 0x0000FF},
                                                                          {"yellow", 0xFFFF00},
                                                                          {"gray", 0x808080},
                                                                          {"grey", 0x808080},
                                                                          {"orange", 0xFFA500}}};
constexpr double kWhole = 100'000;         // of the shares that drawings tell
constexpr std::int32_t kPaletteStart = 8;  // indexes 0 to 7 repeat the palette's first eight colours
constexpr std::size_t kMostIndexed = 64;

// "RRGGBB", with or without two digits of opacity in front.
std::optional<Color> ParseColor(std::string_view text) {
  if (text.size() == 8) text.remove_prefix(2);
  if (text.size() != 6) return std::nullopt;
  Color color = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), color, 16);
  if (error != std::errc() || end != text.data() + text.size() || color < 0) return std::nullopt;
  return color;
}

Color StandardIndexed(std::int32_t index) {
  if (index < kPaletteStart) return PaletteColor(index + 1);
  if (index < kPaletteStart + kPaletteSize) return PaletteColor(index - kPaletteStart + 1);
  return kAutomatic;  // the system's colours of text and background
}

// A colour by hue and saturation, which a tint leaves alone, and lightness, which it moves; all from 0 to 1.
struct Hsl {
  double hue = 0;
  double saturation = 0;
  double lightness = 0;
};

Hsl ToHsl(Color color) {
  const double red = (color >> 16 & 0xFF) / 255.0;
  const double green = (color >> 8 & 0xFF) / 255.0;
  const double blue = (color & 0xFF) / 255.0;
  const double most = std::max({red, green, blue});
  const double spread = most - std::min({red, green, blue});
  Hsl hsl;
  hsl.lightness = most - spread / 2;
  if (spread == 0) return hsl;
  hsl.saturation = spread / (1 - std::fabs(2 * hsl.lightness - 1));
  if (most == red) hsl.hue = (green - blue) / spread + 6;
  if (most == green) hsl.hue = (blue - red) / spread + 2;
  if (most == blue) hsl.hue = (red - green) / spread + 4;
  hsl.hue /= 6;
  return hsl;
}

Color FromHsl(const Hsl& hsl) {
  const double spread = hsl.saturation * std::min(hsl.lightness, 1 - hsl.lightness);
  const auto channel = [&](double offset) {
    const double place = std::fmod(offset + hsl.hue * 12, 12);
    const double level = hsl.lightness - spread * std::clamp(std::min(place - 3, 9 - place), -1.0, 1.0);
    return std::clamp(static_cast<int>(std::lround(level * 255)), 0, 255);
  };
  return channel(0) << 16 | channel(8) << 8 | channel(4);
}

// Moves a colour towards white (tint above 0) or black (below 0).
Color WithTint(Color color, double tint) {
  if (color == kAutomatic || tint == 0 || !std::isfinite(tint)) return color;
  tint = std::clamp(tint, -1.0, 1.0);
  Hsl hsl = ToHsl(color);
  hsl.lightness = tint < 0 ? hsl.lightness * (1 + tint) : hsl.lightness + (1 - hsl.lightness) * tint;
  return FromHsl(hsl);
}

// Makes a colour lighter or darker in the way that drawings do it.
Color WithLight(Color color, double factor, double more) {
  if (color == kAutomatic) return color;
  Hsl hsl = ToHsl(color);
  hsl.lightness = std::clamp(hsl.lightness * factor + more, 0.0, 1.0);
  return FromHsl(hsl);
}

// What the elements within a colour's own make of it.
void Change(DrawingColor& drawn, pugi::xml_node color) {
  double factor = 1;
  double more = 0;
  for (const pugi::xml_node change : color.children()) {
    if (change.type() != pugi::node_element) continue;
    const double share = Number<double>(change, "val").value_or(kWhole) / kWhole;
    if (IsNamed(change.name(), "lumMod")) {
      factor = share;
    } else if (IsNamed(change.name(), "lumOff")) {
      more = share;
    } else {
      drawn.is_exact = drawn.is_exact && IsNamed(change.name(), "alpha") && share == 1;
    }
  }
  if (std::isfinite(factor) && std::isfinite(more) && (factor != 1 || more != 0))
    drawn.color = WithLight(drawn.color, factor, more);
}

}  // namespace

ColorReader::ColorReader(Package& package, const std::string& theme_part) {
  if (theme_part.empty()) return;
  const XmlPart xml(package, theme_part, "theme");
  const pugi::xml_node scheme = Child(Child(xml.root(), "themeElements"), "clrScheme");
  for (const std::string_view name : kThemeColors) {
    const pugi::xml_node color = Child(scheme, name);
    const pugi::xml_node value = Child(color, "srgbClr");
    const auto parsed = value ? ParseColor(Attribute(value, "val"))
                              : ParseColor(Attribute(Child(color, "sysClr"), "lastClr"));
    theme_.push_back(parsed.value_or(kAutomatic));
  }
}

void ColorReader::ReadPalette(pugi::xml_node indexed_colors) {
  ForEachChild(indexed_colors, "rgbColor", [&](pugi::xml_node node) {
    if (indexed_.size() < kMostIndexed)
      indexed_.push_back(ParseColor(Attribute(node, "rgb")).value_or(kAutomatic));
  });
}

Color ColorReader::Read(pugi::xml_node element) const {
  const double tint = Number<double>(element, "tint").value_or(0);
  if (const auto rgb = ParseColor(Attribute(element, "rgb"))) return WithTint(*rgb, tint);
  if (const auto index = Number<std::int32_t>(element, "indexed"); index && *index >= 0) {
    const auto place = static_cast<std::size_t>(*index);
    return WithTint(place < indexed_.size() ? indexed_[place] : StandardIndexed(*index), tint);
  }
  if (const auto index = Number<std::size_t>(element, "theme"); index && *index < theme_.size()) {
    if (*index == kThemeText && tint == 0) return kAutomatic;
    return WithTint(theme_[*index], tint);
  }
  return kAutomatic;
}

std::optional<DrawingColor> ColorReader::ReadDrawn(pugi::xml_node parent) const {
  for (const pugi::xml_node node : parent.children()) {
    if (node.type() != pugi::node_element) continue;
    DrawingColor drawn;
    const std::string_view value = Attribute(node, "val");
    if (IsNamed(node.name(), "srgbClr")) {
      drawn.color = ParseColor(value).value_or(kAutomatic);
    } else if (IsNamed(node.name(), "sysClr")) {
      drawn.color = ParseColor(Attribute(node, "lastClr")).value_or(kAutomatic);
      drawn.is_window = value == "window";
    } else if (IsNamed(node.name(), "schemeClr")) {
      drawn.color = ThemeColor(value);
    } else if (IsNamed(node.name(), "prstClr")) {
      const auto named = std::find_if(kNamedColors.begin(), kNamedColors.end(),
                                      [&](const auto& entry) { return entry.first == value; });
      drawn.color = named == kNamedColors.end() ? kAutomatic : named->second;
    }
    drawn.is_exact = drawn.color != kAutomatic;
    Change(drawn, node);
    return drawn;
  }
  return std::nullopt;
}

Color ColorReader::ThemeColor(std::string_view name) const {
  for (const auto& [role, color] : kThemeRoles) {
    if (name == role) name = color;
  }
  const auto found = std::find(kThemeColors.begin(), kThemeColors.end(), name);
  const auto index = static_cast<std::size_t>(found - kThemeColors.begin());
  return index < theme_.size() ? theme_[index] : kAutomatic;
}

}  // namespace mirelo::workbook
