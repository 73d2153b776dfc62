#include "adapters/calc/objects/differential_formats.h"

#include <array>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <cstdio>

namespace mirelo::calc {

using namespace spreadsheet;

namespace {

constexpr std::string_view kWeight = "CharWeight";
constexpr std::string_view kColor = "CharColor";

Reference<css::container::XNameContainer> StylesOf(const Document::Uno& document) {
  const auto families = As<css::style::XStyleFamiliesSupplier>(document)->getStyleFamilies();
  return As<css::container::XNameContainer>(families->getByName("CellStyles"));
}

// "Mirelo", "Mirelo bold #FF0000".
std::string NameOf(const DifferentialFormat& format) {
  std::string name = "Mirelo";
  if (format.bold) name += " bold";
  if (format.color == kAutomatic) return name;
  std::array<char, sizeof " #RRGGBB"> color{};
  std::snprintf(color.data(), color.size(), " #%06X", static_cast<unsigned>(format.color));
  return name + color.data();
}

}  // namespace

std::optional<Any> SetByStyle(const Document::Uno& document, const std::string& name,
                              std::string_view property) {
  const auto styles = StylesOf(document);
  if (!styles->hasByName(OfficeText(name))) return std::nullopt;
  const auto style = styles->getByName(OfficeText(name));
  const auto state = As<css::beans::XPropertyState>(style)->getPropertyState(OfficeText(property));
  if (state != css::beans::PropertyState_DIRECT_VALUE) return std::nullopt;
  return Properties(style).Get(property);
}

DifferentialFormat FormatOfStyle(const Document::Uno& document, const std::string& name) {
  DifferentialFormat format;
  float weight = 0;
  if (const auto set = SetByStyle(document, name, kWeight); set && (*set >>= weight))
    format.bold = weight > css::awt::FontWeight::NORMAL;
  if (const auto set = SetByStyle(document, name, kColor)) *set >>= format.color;
  return format;
}

std::string StyleOfFormat(const Document::Uno& document, const DifferentialFormat& format) {
  std::string name = NameOf(format);
  const auto styles = StylesOf(document);
  if (styles->hasByName(OfficeText(name))) return name;
  const auto style =
      As<css::lang::XMultiServiceFactory>(document)->createInstance("com.sun.star.style.CellStyle");
  styles->insertByName(OfficeText(name), Any(style));
  const Properties made(style);
  if (format.bold) made.Set(kWeight, float{css::awt::FontWeight::BOLD});
  if (format.color != kAutomatic) made.Set(kColor, format.color);
  return name;
}

}  // namespace mirelo::calc
