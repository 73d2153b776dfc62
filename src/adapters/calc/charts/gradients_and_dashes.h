#pragma once

#include <com/sun/star/chart/XChartDocument.hpp>
#include <cstdint>
#include <rtl/ustring.hxx>

#include "adapters/calc/objects/interfaces.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::calc {

// Gradients and dashes, which charts of the office know by names in tables of their own.

// The name of the gradient of a fill, which has one.
rtl::OUString GradientName(const Reference<css::chart::XChartDocument>& chart,
                           const spreadsheet::ChartFill& fill);
// The name of the dashes of a line; empty for a line that is drawn through. The office has no slanted and no
// double lines in charts.
rtl::OUString DashName(const Reference<css::chart::XChartDocument>& chart, std::int32_t line_style);

}  // namespace mirelo::calc
