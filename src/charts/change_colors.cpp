// The colours of a chart, which tell the direction of the market at a glance.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "automation/text.h"
#include "automation/variant.h"
#include "charts/color_lists.h"
#include "core/cMirelo.h"
#include "diagnostics/routine.h"
#include "host/excel/border.h"
#include "host/excel/chart.h"
#include "host/excel/chart_parts.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"
#include "host/excel/series.h"

namespace mirelo {

using host::excel::Chart;
using host::excel::Series;

namespace {

constexpr std::int32_t kGradientVariant = 1;
constexpr std::int32_t kMarkerSize = 6;

// The colours of one point.
struct PointColors {
  std::int32_t line = 0;
  std::int32_t marker_ground = 0;
  std::int32_t marker_edge = 0;
};

// A chart while it is painted. The statements are those of Change_Colors.
struct ChartPainting {
  Frame& frame;
  Chart& chart;

  std::shared_ptr<Series> series = nullptr;
  Variant values = {};  // the numbers plotted, from 1 on
  Variant colors = {};

  void PaintArea();
  void PaintPlot();
  void PaintTitle();
  void ShapeSeries();
  void PaintPoints(bool grey_out);
  void PaintPoint(std::int32_t index, const PointColors& point);
  void PaintSeries();

  Series& Plotted() const { return Referred(series.get()); }
  std::int32_t LastPoint() const { return std::as_const(values).AsArray().UBound(); }
  double Value(std::int32_t index) const { return std::as_const(values).AsArray()(index).ToDouble(); }
  std::int32_t Color(ChartColor color) const {
    return std::as_const(colors).AsArray()(static_cast<std::int32_t>(color)).ToInt32();
  }
  PointColors Colors(ChartColor line, ChartColor marker_ground, ChartColor marker_edge) const {
    return {Color(line), Color(marker_ground), Color(marker_edge)};
  }
  PointColors StayColors() const {
    return Colors(ChartColor::StayLine, ChartColor::StayMarkerGround, ChartColor::StayMarkerEdge);
  }
};

}  // namespace

Variant cMirelo::Load_Colors(double Change_Now, double Change_Today, const std::string& Chart_Style) {
  return Function<Variant>("Mirelo.cMirelo.Load_Colors", {}, [&](Frame& frame, Variant& colors) {
    std::string list;
    STEP(list = ChartColorList(Change_Now, Change_Today, Chart_Style));
    STEP(colors = VariantArray::OfTexts(Split(list, ",")));
    frame.pop();
  });
}

Variant cMirelo::Change_Colors(const std::shared_ptr<Chart>& Dest_Chart, double Change_Now,
                               double Change_Today, const std::string& Chart_Style, std::int16_t Color_Points,
                               std::int16_t Use_Stay_Color_With_Points) {
  return Function<Variant>("Mirelo.cMirelo.Change_Colors", {}, [&](Frame& frame, Variant&) {
    if (!Dest_Chart) return frame.pop();
    ChartPainting painting{frame, *Dest_Chart};
    STEP(painting.series = Dest_Chart->SeriesCollection(1));
    STEP(painting.values = painting.Plotted().Values());
    STEP(painting.colors = Load_Colors(Change_Now, Change_Today, Chart_Style));
    painting.PaintArea();
    painting.PaintPlot();
    painting.PaintTitle();
    painting.ShapeSeries();
    if (Color_Points == 1) {
      painting.PaintPoints(Use_Stay_Color_With_Points == 1);
    } else {
      painting.PaintSeries();
    }
    frame.pop();
  });
}

namespace {

void ChartPainting::PaintArea() {
  const auto fill = [&] { return chart.ChartArea()->Fill(); };
  STEP(fill()->TwoColorGradient(host::excel::msoGradientVertical, kGradientVariant));
  STEP(fill()->Visible(host::excel::msoTrue));
  STEP(fill()->ForeColor()->SchemeColor(Color(ChartColor::AreaFore)));
  STEP(fill()->BackColor()->SchemeColor(Color(ChartColor::AreaBack)));
}

void ChartPainting::PaintPlot() {
  const auto fill = [&] { return chart.PlotArea()->Fill(); };
  STEP(fill()->TwoColorGradient(host::excel::msoGradientVertical, kGradientVariant));
  STEP(fill()->Visible(host::excel::msoTrue));
  STEP(fill()->ForeColor()->SchemeColor(Color(ChartColor::PlotFore)));
  STEP(fill()->BackColor()->SchemeColor(Color(ChartColor::PlotBack)));
}

void ChartPainting::PaintTitle() {
  STEP(chart.ChartTitle()->Interior()->ColorIndex(Color(ChartColor::TitleGround)));
  STEP(chart.ChartTitle()->Font()->ColorIndex(Color(ChartColor::TitleText)));
}

void ChartPainting::ShapeSeries() {
  STEP(Plotted().Border()->Weight(host::excel::xlMedium));
  STEP(Plotted().Border()->LineStyle(host::excel::xlContinuous));
  STEP(Plotted().MarkerStyle(host::excel::xlMarkerStyleDiamond));
  STEP(Plotted().MarkerSize(kMarkerSize));
  STEP(Plotted().Smooth(false));
  STEP(Plotted().Shadow(false));
}

// A flat stretch keeps the colours of the step before it, unless it is to be grey.
void ChartPainting::PaintPoints(bool grey_out) {
  PointColors current;
  STEP(current = StayColors());
  PaintPoint(1, current);
  for (const std::int32_t i : frame.loop([&] { return Bounds{2, LastPoint()}; })) {
    if (frame.test([&] { return Value(i) == Value(i - 1); })) {
      if (grey_out) STEP(current = StayColors());
    } else if (frame.test([&] { return Value(i) > Value(i - 1); })) {
      STEP(current = Colors(ChartColor::RiseLine, ChartColor::RiseMarkerGround, ChartColor::RiseMarkerEdge));
    } else {
      STEP(current = Colors(ChartColor::FallLine, ChartColor::FallMarkerGround, ChartColor::FallMarkerEdge));
    }
    PaintPoint(i, current);
  }
}

void ChartPainting::PaintPoint(std::int32_t index, const PointColors& point) {
  STEP(Plotted().Points(index)->Border()->ColorIndex(point.line));
  STEP(Plotted().Points(index)->MarkerBackgroundColorIndex(point.marker_ground));
  STEP(Plotted().Points(index)->MarkerForegroundColorIndex(point.marker_edge));
}

void ChartPainting::PaintSeries() {
  STEP(Plotted().Border()->ColorIndex(Color(ChartColor::Line)));
  STEP(Plotted().MarkerBackgroundColorIndex(Color(ChartColor::MarkerGround)));
  STEP(Plotted().MarkerForegroundColorIndex(Color(ChartColor::MarkerEdge)));
}

}  // namespace

}  // namespace mirelo
