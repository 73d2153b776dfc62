#include "adapters/calc/charts/chart_lines.h"

#include <com/sun/star/beans/UnknownPropertyException.hpp>
#include <com/sun/star/drawing/FillStyle.hpp>
#include <com/sun/star/drawing/LineStyle.hpp>

#include "adapters/calc/charts/gradients_and_dashes.h"
#include "host/excel/constants.h"
#include "spreadsheet/color_index.h"

namespace mirelo::calc {

using namespace host::excel;
using spreadsheet::kAutomatic;
using spreadsheet::kWhite;
using spreadsheet::Look;

namespace {

namespace drawing = css::drawing;

// Hundredths of millimetres; 0 is as thin as can be drawn.
sal_Int32 WidthOf(std::int32_t weight) {
  switch (weight) {
    case xlHairline:
      return 0;
    case xlMedium:
      return 62;
    case xlThick:
      return 88;
    default:
      return 26;
  }
}

}  // namespace

void PaintLine(const Reference<css::chart::XChartDocument>& chart, const Properties& part,
               const LineNames& names, const spreadsheet::ChartLine& line, spreadsheet::Color automatic) {
  if (line.look == Look::None) return part.Set(names.style, drawing::LineStyle_NONE);
  const rtl::OUString dashes = DashName(chart, line.style);
  if (dashes.isEmpty()) {
    part.Set(names.style, drawing::LineStyle_SOLID);
  } else {
    part.Set(names.dashes, dashes);
    part.Set(names.style, drawing::LineStyle_DASH);
  }
  part.Set(names.width, WidthOf(line.weight));
  part.Set(names.color, line.color == kAutomatic ? automatic : line.color);
}

void PaintFill(const Reference<css::chart::XChartDocument>& chart, const Properties& part,
               const spreadsheet::ChartFill& fill) {
  switch (fill.look) {
    case Look::Automatic:
      return PaintAsTheOfficeDoes(part, {"FillStyle", "FillColor"});
    case Look::None:
      return part.Set("FillStyle", drawing::FillStyle_NONE);
    case Look::Own:
      break;
  }
  if (fill.gradient == 0) {
    part.Set("FillColor", fill.fore == kAutomatic ? kWhite : sal_Int32{fill.fore});
    return part.Set("FillStyle", drawing::FillStyle_SOLID);
  }
  part.Set("FillGradientName", GradientName(chart, fill));
  part.Set("FillStyle", drawing::FillStyle_GRADIENT);
}

void PaintAsTheOfficeDoes(const Properties& part, const std::vector<std::string_view>& names) {
  for (const std::string_view name : names) {
    try {
      part.Reset(name);
    } catch (const css::beans::UnknownPropertyException&) {  // a part without it looks as it does
    }
  }
}

}  // namespace mirelo::calc
