#include "adapters/calc/charts/chart_painter.h"

#include <algorithm>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/chart/XDiagramPositioning.hpp>
#include <com/sun/star/drawing/FillStyle.hpp>
#include <com/sun/star/drawing/LineStyle.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>

#include "adapters/calc/charts/chart_lines.h"
#include "adapters/calc/charts/office_kinds.h"
#include "adapters/calc/charts/series_painter.h"
#include "spreadsheet/charts/chart_layout.h"
#include "spreadsheet/color_index.h"

namespace mirelo::calc {

using spreadsheet::Chart;
using spreadsheet::ChartAxis;
using spreadsheet::ChartBox;
using spreadsheet::ChartTitle;
using spreadsheet::kAutomatic;
using spreadsheet::kBlack;
using spreadsheet::kWhite;
using spreadsheet::Look;

namespace {

// While it lives, the chart is not drawn.
class DrawnOnce {
 public:
  explicit DrawnOnce(const OfficeChart& chart) : model_(As<css::frame::XModel>(chart.document)) {
    model_->lockControllers();
  }
  ~DrawnOnce() {
    try {
      model_->unlockControllers();
    } catch (const css::uno::Exception&) {  // the chart is gone
    }
  }
  DrawnOnce(const DrawnOnce&) = delete;
  DrawnOnce& operator=(const DrawnOnce&) = delete;

 private:
  const Reference<css::frame::XModel> model_;
};

// A diagram of another kind is a new one: nothing of the old one's axes and walls is left.
void PaintKind(const OfficeChart& chart, const Chart& now, Chart& painted) {
  if (now.kind == painted.kind) return;
  const auto factory = As<css::lang::XMultiServiceFactory>(chart.document);
  const auto office = std::ranges::find(kOfficeKinds, now.kind, &OfficeKind::kind);
  chart.document->setDiagram(As<css::chart::XDiagram>(factory->createInstance(OfficeText(office->diagram))));
  if (now.kind->has_markers) chart.Diagram().Set("SymbolType", sal_Int32{-1});  // as the office chooses
  chart.Diagram().Set("HasXAxisGrid", false);
  chart.Diagram().Set("HasYAxisGrid", false);
  painted.kind = now.kind;
  painted.category = painted.value = ChartAxis();
  painted.plot = {};
  painted.plot_border = {};
  painted.plot_place.reset();
  // Series live on, in other looks: what was told of them is painted anew.
  for (auto& series : painted.series) {
    const auto values = series.values;
    const auto sheet = series.sheet;
    series = {};
    series.values = values;
    series.sheet = sheet;
  }
}

void PaintFont(const Properties& part, double size, bool bold, spreadsheet::Color color) {
  part.Set("CharHeight", static_cast<float>(size));
  part.Set("CharWeight", bold ? css::awt::FontWeight::BOLD : css::awt::FontWeight::NORMAL);
  part.Set("CharColor", color == kAutomatic ? kBlack : sal_Int32{color});
}

struct AxisNames {
  const char* axis;
  const char* grid;
};

void PaintAxis(const OfficeChart& chart, const AxisNames& names, const ChartAxis& now, ChartAxis& painted,
               const std::function<Properties()>& axis, const std::function<Properties()>& grid) {
  if (now == painted) return;
  if (now.on != painted.on) chart.Diagram().Set(names.axis, now.on);
  const bool has_other_font = now.label_size != painted.label_size || now.label_bold != painted.label_bold ||
                              now.label_color != painted.label_color;
  if (has_other_font) PaintFont(axis(), now.label_size, now.label_bold, now.label_color);
  if (now.gridlines != painted.gridlines) chart.Diagram().Set(names.grid, now.gridlines);
  if (now.gridlines && (now.gridline != painted.gridline)) {
    if (now.gridline.look == Look::Automatic) {
      PaintAsTheOfficeDoes(grid(), {"LineStyle", "LineColor", "LineWidth"});
    } else {
      PaintLine(chart.document, grid(), kOwnLine, now.gridline, kBlack);
    }
  }
  painted = now;
}

void PaintTitleLooks(const OfficeChart& chart, const ChartTitle& title) {
  const Properties part = chart.Title();
  part.Set("String", OfficeText(title.text));
  PaintFont(part, title.size, title.bold, title.color);
  if (title.border.look == Look::Own) {
    PaintLine(chart.document, part, kOwnLine, title.border, kBlack);
  } else {
    part.Set("LineStyle", css::drawing::LineStyle_NONE);
  }
  if (title.fill == Look::Own) {
    part.Set("FillColor", title.interior == kAutomatic ? kWhite : sal_Int32{title.interior});
    part.Set("FillStyle", css::drawing::FillStyle_SOLID);
  } else {
    part.Set("FillStyle", css::drawing::FillStyle_NONE);
  }
}

void PaintTitle(const OfficeChart& chart, const Chart& now, Chart& painted) {
  if (now.title == painted.title) return;
  if (now.title.has_value() != painted.title.has_value())
    chart.Whole().Set("HasMainTitle", now.title.has_value());
  if (now.title) {
    PaintTitleLooks(chart, *now.title);
    if (now.title->left || now.title->top) {
      const ChartBox box = TitleBox(now);
      chart.document->getTitle()->setPosition({LengthOf(box.left), LengthOf(box.top)});
    }
  }
  painted.title = now.title;
}

void PaintWalls(const OfficeChart& chart, const Chart& now, Chart& painted) {
  if (now.area != painted.area) PaintFill(chart.document, chart.Area(), now.area);
  painted.area = now.area;
  if (now.plot != painted.plot) PaintFill(chart.document, chart.Wall(), now.plot);
  painted.plot = now.plot;
  if (now.plot_border != painted.plot_border) {
    if (now.plot_border.look == Look::Automatic) {
      PaintAsTheOfficeDoes(chart.Wall(), {"LineStyle", "LineColor", "LineWidth"});
    } else {
      PaintLine(chart.document, chart.Wall(), kOwnLine, now.plot_border, kBlack);
    }
  }
  painted.plot_border = now.plot_border;
}

void PaintPlotPlace(const OfficeChart& chart, const Chart& now, Chart& painted) {
  if (now.plot_place == painted.plot_place && now.place == painted.place) return;
  const auto plot = As<css::chart::XDiagramPositioning>(chart.document->getDiagram());
  if (now.plot_place) {
    const ChartBox box = PlotBox(now);
    plot->setDiagramPositionIncludingAxes(
        {LengthOf(box.left), LengthOf(box.top), LengthOf(box.width), LengthOf(box.height)});
  } else if (painted.plot_place) {
    plot->setAutomaticDiagramPositioning();
  }
  painted.plot_place = now.plot_place;
}

void PaintPlace(const OfficeChart& chart, const Chart& now, Chart& painted) {
  const ChartBox& place = now.place;
  if (place.width != painted.place.width || place.height != painted.place.height)
    chart.shape->setSize({LengthOf(place.width), LengthOf(place.height)});
  if (place.left != painted.place.left || place.top != painted.place.top)
    chart.shape->setPosition({LengthOf(place.left), LengthOf(place.top)});
}

}  // namespace

void PaintChart(const Reference<css::uno::XComponentContext>& context, const OfficeChart& chart,
                const Chart& now, Chart& painted) {
  const DrawnOnce drawn_once(chart);
  PaintPlace(chart, now, painted);
  PaintKind(chart, now, painted);
  SeriesPainter series(context, chart);
  series.PaintSources(now, painted);
  if (now.legend != painted.legend) chart.Whole().Set("HasLegend", now.legend);
  painted.legend = now.legend;
  PaintAxis(
      chart, {"HasXAxis", "HasXAxisGrid"}, now.category, painted.category,
      [&] { return chart.CategoryAxis(); }, [&] { return chart.CategoryGrid(); });
  PaintAxis(
      chart, {"HasYAxis", "HasYAxisGrid"}, now.value, painted.value, [&] { return chart.ValueAxis(); },
      [&] { return chart.ValueGrid(); });
  PaintWalls(chart, now, painted);
  PaintTitle(chart, now, painted);
  PaintPlotPlace(chart, now, painted);
  painted.place = now.place;
  series.PaintLooks(now, painted);
}

}  // namespace mirelo::calc
