#include "spreadsheet/charts/chart_layout.h"

#include <algorithm>
#include <cmath>

#include "spreadsheet/display/text_width.h"
#include "spreadsheet/limits.h"
#include "spreadsheet/pixels.h"

namespace mirelo::spreadsheet {

namespace {

constexpr double kMargin = 6;
constexpr double kLegendWidth = 72;
constexpr double kTitlePadding = 3;
constexpr double kLineHeight = 1.25;  // of the font size

// The place nearest to the wanted one at which a part of this size lies within `whole`.
double Within(double wanted, double size, double whole) {
  return std::clamp(wanted, 0.0, std::max(whole - size, 0.0));
}

double TitleHeight(const ChartTitle& title) {
  const auto breaks = std::count(title.text.begin(), title.text.end(), '\n');
  return (static_cast<double>(breaks) + 1) * title.size * kLineHeight + 2 * kTitlePadding;
}

double TitleWidth(const ChartTitle& title) {
  return WidthOfText(title.text, title.size, title.bold) * kPointsPerPixel + 2 * kTitlePadding;
}

// What other parts leave.
ChartBox FreeBox(const Chart& chart) {
  const double top = kMargin + (chart.title ? TitleHeight(*chart.title) + kMargin : 0);
  const double right = kMargin + (chart.legend ? kLegendWidth + kMargin : 0);
  return {kMargin, top, chart.place.width - kMargin - right, chart.place.height - top - kMargin};
}

void ScaleFont(double& size, bool scales, double ratio) {
  if (!scales) return;
  size = std::clamp(std::round(size * std::sqrt(ratio) * 4) / 4, kLeastFontSize, kGreatestFontSize);
}

}  // namespace

double MiddleOf(double whole, double part) {
  return std::round((whole - part) / 2 / kPointsPerPixel) * kPointsPerPixel;
}

ChartBox TitleBox(const Chart& chart) {
  const ChartTitle& title = *chart.title;
  ChartBox box;
  box.width = std::min(TitleWidth(title), chart.place.width);
  box.height = std::min(TitleHeight(title), chart.place.height);
  box.left = Within(title.left.value_or((chart.place.width - box.width) / 2), box.width, chart.place.width);
  box.top = Within(title.top.value_or(kMargin), box.height, chart.place.height);
  return box;
}

void KeepTitleWithin(Chart& chart) {
  if (!chart.title) return;
  const ChartBox box = TitleBox(chart);
  if (chart.title->left) chart.title->left = box.left;
  if (chart.title->top) chart.title->top = box.top;
}

ChartBox PlotBox(const Chart& chart) {
  ChartBox box = chart.plot_place.value_or(FreeBox(chart));
  box.width = std::clamp(box.width, std::min(kLeastPlot, chart.place.width), chart.place.width);
  box.height = std::clamp(box.height, std::min(kLeastPlot, chart.place.height), chart.place.height);
  box.left = Within(box.left, box.width, chart.place.width);
  box.top = Within(box.top, box.height, chart.place.height);
  return box;
}

void Resize(Chart& chart, double width, double height) {
  const double across = width / chart.place.width;
  const double down = height / chart.place.height;
  chart.place.width = width;
  chart.place.height = height;
  if (chart.plot_place) {
    chart.plot_place->left *= across;
    chart.plot_place->width *= across;
    chart.plot_place->top *= down;
    chart.plot_place->height *= down;
  }
  for (ChartAxis* axis : {&chart.category, &chart.value})
    ScaleFont(axis->label_size, axis->scales, across * down);
  if (!chart.title) return;
  if (chart.title->left) *chart.title->left *= across;
  if (chart.title->top) *chart.title->top *= down;
  ScaleFont(chart.title->size, chart.title->scales, across * down);
  KeepTitleWithin(chart);
}

}  // namespace mirelo::spreadsheet
