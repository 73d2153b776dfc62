#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>

#include "adapters/calc/charts/office_chart.h"
#include "adapters/calc/objects/interfaces.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::calc {

// Brings a chart of the office from what was painted last to what it is now, and notes in `painted` what was
// done. What is the same in both is left alone, and with it what a person made of it. The chart is drawn once
// for all of it.
//
// What the office's charts have not, nobody sees: fonts that scale with the chart, shadows, patterns, a
// line of one point (see SeriesPainter), double and slanted lines.
void PaintChart(const Reference<css::uno::XComponentContext>& context, const OfficeChart& chart,
                const spreadsheet::Chart& now, spreadsheet::Chart& painted);

}  // namespace mirelo::calc
