#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>
#include <cstddef>

#include "adapters/calc/charts/office_chart.h"
#include "adapters/calc/objects/interfaces.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::calc {

// Paints the series of a chart: what they plot and what they look like. The office can give no colour to the
// line of one point: its marker has that colour instead, unless the marker was given one.
class SeriesPainter {
 public:
  SeriesPainter(const Reference<css::uno::XComponentContext>& context, const OfficeChart& chart);

  // Both bring the office's chart from `painted` to `now`, and note in `painted` what was done.
  void PaintSources(const spreadsheet::Chart& now, spreadsheet::Chart& painted);
  void PaintLooks(const spreadsheet::Chart& now, spreadsheet::Chart& painted) const;

 private:
  void Add();
  void RemoveLast();
  void Plot(const SeriesReference& series, const spreadsheet::ChartSeries& source) const;
  void PaintLook(std::size_t number, const spreadsheet::ChartSeries& now,
                 const spreadsheet::ChartSeries& painted) const;
  void PaintPoints(std::size_t number, const spreadsheet::ChartSeries& now,
                   const spreadsheet::ChartSeries& painted, bool all) const;
  void PaintPoint(std::size_t number, const Properties& point, const spreadsheet::ChartSeries& series,
                  const spreadsheet::ChartPoint& looks) const;
  // What the office gives a series that nobody coloured.
  spreadsheet::Color SchemeColor(std::size_t number) const;

  const Reference<css::uno::XComponentContext>& context_;
  const OfficeChart& chart_;
  const bool has_markers_;
  std::vector<SeriesReference> series_;
};

}  // namespace mirelo::calc
