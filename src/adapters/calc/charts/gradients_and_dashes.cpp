#include "adapters/calc/charts/gradients_and_dashes.h"

#include <com/sun/star/awt/Gradient.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/drawing/LineDash.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <string>

#include "adapters/calc/objects/office_text.h"
#include "host/excel/constants.h"
#include "spreadsheet/color_index.h"

namespace mirelo::calc {

using namespace host::excel;

namespace {

constexpr sal_Int16 kFromLeftToRight = 900;  // tenths of degrees
constexpr sal_Int16 kFull = 100;             // percent

// Puts `value` into the table of its kind, unless it is there.
rtl::OUString Named(const Reference<css::chart::XChartDocument>& chart, const char* table,
                    const std::string& name, const Any& value) {
  const auto factory = As<css::lang::XMultiServiceFactory>(chart);
  const auto values = As<css::container::XNameContainer>(factory->createInstance(OfficeText(table)));
  const rtl::OUString by = OfficeText(name);
  if (!values->hasByName(by)) values->insertByName(by, value);
  return by;
}

css::drawing::LineDash Dash(sal_Int16 dots, sal_Int16 dashes) {
  constexpr sal_Int32 kDot = 35;
  constexpr sal_Int32 kDash = 140;
  return {css::drawing::DashStyle_RECT, dots, kDot, dashes, kDash, 2 * kDot};
}

}  // namespace

rtl::OUString GradientName(const Reference<css::chart::XChartDocument>& chart,
                           const spreadsheet::ChartFill& fill) {
  const auto shown = [](spreadsheet::Color color) {
    return color == spreadsheet::kAutomatic ? spreadsheet::kWhite : color;
  };
  // The second variant is the first one turned round; the third and fourth begin in the middle.
  const bool is_turned = fill.variant == 2 || fill.variant == 3;
  css::awt::Gradient gradient;
  gradient.Style = fill.variant > 2 ? css::awt::GradientStyle_AXIAL : css::awt::GradientStyle_LINEAR;
  gradient.StartColor = shown(is_turned ? fill.back : fill.fore);
  gradient.EndColor = shown(is_turned ? fill.fore : fill.back);
  gradient.Angle = fill.gradient == msoGradientVertical ? kFromLeftToRight : sal_Int16{0};
  gradient.StartIntensity = gradient.EndIntensity = kFull;
  const std::string name = "Mirelo " + std::to_string(fill.gradient) + " " + std::to_string(fill.variant) +
                           " " + std::to_string(gradient.StartColor) + " " +
                           std::to_string(gradient.EndColor);
  return Named(chart, "com.sun.star.drawing.GradientTable", name, Any(gradient));
}

rtl::OUString DashName(const Reference<css::chart::XChartDocument>& chart, std::int32_t line_style) {
  constexpr const char* kTable = "com.sun.star.drawing.DashTable";
  switch (line_style) {
    case xlDash:
      return Named(chart, kTable, "Mirelo dashes", Any(Dash(0, 1)));
    case xlDot:
      return Named(chart, kTable, "Mirelo dots", Any(Dash(1, 0)));
    case xlDashDot:
    case xlSlantDashDot:
      return Named(chart, kTable, "Mirelo dashes and dots", Any(Dash(1, 1)));
    case xlDashDotDot:
      return Named(chart, kTable, "Mirelo dashes and two dots", Any(Dash(2, 1)));
    default:
      return {};
  }
}

}  // namespace mirelo::calc
