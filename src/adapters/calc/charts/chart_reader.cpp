#include "adapters/calc/charts/chart_reader.h"

#include <cmath>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/chart2/Symbol.hpp>

#include "adapters/calc/charts/document_charts.h"
#include "adapters/calc/charts/plotted_cells.h"
#include "adapters/calc/objects/office_text.h"

namespace mirelo::calc {

using spreadsheet::Chart;
using spreadsheet::ChartAxis;
using spreadsheet::ChartSeries;
using spreadsheet::ChartTitle;
using spreadsheet::Look;

namespace {

namespace chart2 = css::chart2;

// A quarter of a point is as fine as clients set font sizes.
double FontSize(const Properties& part, double otherwise) {
  return std::round(part.Get("CharHeight", static_cast<float>(otherwise)) * 4.0) / 4;
}

bool IsBold(const Properties& part) {
  return part.Get("CharWeight", css::awt::FontWeight::NORMAL) > css::awt::FontWeight::NORMAL;
}

ChartTitle ReadTitle(const OfficeChart& chart) {
  const Properties part = chart.Title();
  ChartTitle title;
  title.text = TextOf(part.Get("String", rtl::OUString()));
  title.size = FontSize(part, title.size);
  title.bold = IsBold(part);
  const auto place = chart.document->getTitle()->getPosition();
  title.left = PointsOf(place.X);
  title.top = PointsOf(place.Y);
  return title;
}

ChartAxis ReadAxis(const OfficeChart& chart, const char* axis, const char* grid, const Properties& labels) {
  ChartAxis read;
  read.on = chart.Diagram().Get(axis, true);
  read.gridlines = chart.Diagram().Get(grid, false);
  read.label_size = FontSize(labels, read.label_size);
  read.label_bold = IsBold(labels);
  return read;
}

// The points that have looks of their own, so that they can be taken from them.
void ReadPoints(const SeriesReference& series, bool has_markers, ChartSeries& read) {
  css::uno::Sequence<sal_Int32> own;
  Properties(series).Get("AttributedDataPoints") >>= own;
  for (const sal_Int32 index : own) {
    if (index < 0 || index >= (read.values ? read.values->Cells() : 0)) continue;
    const auto at = static_cast<std::size_t>(index);
    if (read.points.size() <= at) read.points.resize(at + 1);
    const Properties point(series->getDataPointByIndex(index));
    if (has_markers) {
      const auto marker = point.Get("Symbol", chart2::Symbol());
      read.points[at].background = {Look::Own, marker.FillColor};
      read.points[at].foreground = {Look::Own, marker.BorderColor};
    } else {
      read.points[at].background = {Look::Own, point.Get("Color", sal_Int32{0})};
    }
  }
}

}  // namespace

Chart ReadChart(const OfficeChart& office, DocumentCharts& charts) {
  Chart chart;
  chart.kind = &office.Kind();
  chart.place = PlaceOf(office);
  chart.legend = office.Whole().Get("HasLegend", false);
  if (office.Whole().Get("HasMainTitle", false)) chart.title = ReadTitle(office);
  ReadCells(CellsOfSeries(office), {}, charts, chart);
  const auto series = office.Series();
  for (std::size_t i = 0; i < series.size(); ++i)
    ReadPoints(series[i], chart.kind->has_markers, chart.series[i]);
  try {
    chart.category = ReadAxis(office, "HasXAxis", "HasXAxisGrid", office.CategoryAxis());
    chart.value = ReadAxis(office, "HasYAxis", "HasYAxisGrid", office.ValueAxis());
  } catch (const css::uno::Exception&) {  // a kind without axes, such as a pie
  }
  return chart;
}

std::vector<rtl::OUString> CellsOfSeries(const OfficeChart& chart) {
  std::vector<rtl::OUString> cells;
  for (const SeriesReference& series : chart.Series()) {
    const auto values = ValuesOf(series);
    cells.push_back(values.is() ? values->getSourceRangeRepresentation() : rtl::OUString());
  }
  return cells;
}

void ReadCells(const std::vector<rtl::OUString>& cells, const std::vector<rtl::OUString>& before,
               DocumentCharts& charts, Chart& chart) {
  chart.series.resize(cells.size());
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i < before.size() && cells[i] == before[i]) continue;
    const auto named = CellsNamed(TextOf(cells[i]));
    const auto sheet = named ? charts.CellsOf(named->sheet) : nullptr;
    chart.series[i].values = sheet == nullptr ? std::nullopt : std::optional(named->area);
    chart.series[i].sheet = sheet;
  }
}

spreadsheet::ChartBox PlaceOf(const OfficeChart& chart) {
  const auto place = chart.shape->getPosition();
  const auto size = chart.shape->getSize();
  return {PointsOf(place.X), PointsOf(place.Y), PointsOf(size.Width), PointsOf(size.Height)};
}

void ReadWhatAPersonChanged(const OfficeChart& office, Chart& chart, Chart& painted) {
  const auto take = [&](auto member, const auto& shown) {
    if (painted.*member == shown) return;
    painted.*member = shown;
    chart.*member = shown;
  };
  take(&Chart::legend, office.Whole().Get("HasLegend", painted.legend));

  const bool has_title = office.Whole().Get("HasMainTitle", painted.title.has_value());
  if (has_title != painted.title.has_value()) {
    painted.title = has_title ? std::optional(ReadTitle(office)) : std::nullopt;
    chart.title = painted.title;
  } else if (has_title) {
    const std::string text = TextOf(office.Title().Get("String", OfficeText(painted.title->text)));
    if (text == painted.title->text) return;
    painted.title->text = text;
    if (chart.title) chart.title->text = text;
  }
}

}  // namespace mirelo::calc
