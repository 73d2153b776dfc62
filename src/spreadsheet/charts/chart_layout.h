#pragma once

#include "spreadsheet/charts/chart.h"

namespace mirelo::spreadsheet {

// Where a chart stands that is put into the middle of something, on a whole pixel.
double MiddleOf(double whole, double part);

// Where the parts of a chart stand: points from its top left corner, always within its edge.

// The place of the title, which the chart must have. It is as wide as its text in its font, estimated, and
// as high as its lines at one and a quarter of the font size, with 3 points to spare at each side. Unless
// a place was set, it stands 6 points below the chart's top edge in the middle.
ChartBox TitleBox(const Chart& chart);

// Moves a title that was set beyond the chart's edge back to it.
void KeepTitleWithin(Chart& chart);

// The place of the plot area: the one that was set, or all that is left by the title, a legend of 72 points
// at the right, and 6 points at each edge.
ChartBox PlotBox(const Chart& chart);

// The least width and height of a plot area.
inline constexpr double kLeastPlot = 1;

// Gives the chart another size. The places of its parts change in the same ratio. Fonts that scale change
// by the square root of the areas' ratio, to a quarter of a point.
void Resize(Chart& chart, double width, double height);

}  // namespace mirelo::spreadsheet
