// The place and the size of a new chart on its sheet.

#include <cstdint>
#include <memory>
#include <string>

#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "host/excel/application.h"
#include "host/excel/border.h"
#include "host/excel/chart.h"
#include "host/excel/chart_object.h"
#include "host/excel/chart_parts.h"
#include "host/excel/interior.h"
#include "host/excel/range.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/window.h"
#include "host/excel/worksheet.h"

namespace mirelo {

using host::excel::Chart;
using host::excel::ChartObject;
using host::excel::Shape;
using host::excel::Worksheet;

namespace {

constexpr const char* kNameWithoutBlank = "Chart";
// How far the plot area is asked to go beyond its chart: it is cut back to the whole of it.
constexpr std::int16_t kPlotExcess = 10;

constexpr std::int32_t kTitleFrameColor = 56;
constexpr std::int32_t kTitleGroundColor = 15;
constexpr std::int32_t kTitlePatternColor = 1;

// Error 13 for a chart that lies on no worksheet.
std::shared_ptr<Worksheet> SheetOf(Chart& chart) {
  const auto holder = std::dynamic_pointer_cast<ChartObject>(chart.Parent());
  if (!holder) throw Errors::TypeMismatch();
  return holder->Parent();
}

// The shape's name up to its first blank: "Chart" of "Chart 3".
std::string NameOf(Chart& chart, const std::string& sheet_name) {
  const std::string shape(Trim(Mid(chart.Name(), Len(sheet_name) + 1)));
  const std::int32_t blank = InStr(1, shape, " ", Compare::Binary);
  return blank == 0 ? kNameWithoutBlank : std::string(Left(shape, blank - 1));
}

// Brings the focus from the chart to its sheet: to its first cell, or to itself while it lies behind others.
void LeaveChart(Worksheet& sheet) {
  try {
    sheet.Range("A1")->Select();
  } catch (const RuntimeError&) {
    sheet.Select();
  }
}

// A chart while it is placed. The statements are those of Move_And_Resize_Chart.
struct ChartPlacing {
  Frame& frame;
  Chart& chart;

  std::shared_ptr<Worksheet> sheet = nullptr;
  // The places of the last two charts among the sheet's shapes, from 1 on; 0 for none. The last one is new.
  std::int32_t last = 0;
  std::int32_t previous = 0;

  void FindShapes();
  void FillWithPlot(std::int16_t height, double width);
  void MakeTitleATag();

  Worksheet& Sheet() const { return Referred(sheet.get()); }
  std::shared_ptr<Shape> ShapeAt(std::int32_t place) const { return Sheet().Shapes()->Item(place); }
};

}  // namespace

Variant frmMirelo::Move_And_Resize_Chart(const std::shared_ptr<Chart>& chart, std::string& name,
                                         std::int16_t height, double factor, std::int16_t column,
                                         std::int16_t points) {
  return Function<Variant>("Mirelo.frmMirelo.Move_And_Resize_Chart", {}, [&](Frame& frame, Variant&) {
    if (!chart) return frame.pop();
    ChartPlacing placing{frame, *chart};
    const double width = factor * points;
    double left = 0;
    double top = 0;
    STEP(placing.sheet = SheetOf(*chart));
    STEP(name = NameOf(*chart, placing.Sheet().Name()));
    placing.FindShapes();
    STEP(LeaveChart(placing.Sheet()));

    if (placing.previous > 0) {
      STEP(left = placing.ShapeAt(placing.previous)->Left());
      STEP(top = placing.ShapeAt(placing.previous)->Top() + height);
    } else {
      STEP(left = placing.Sheet().Cells(1, column)->Left());
      STEP(top = placing.Sheet().Cells(1, column)->Top());
    }
    if (frame.test([&] {
          const auto window = Excel().ActiveWindow();
          return Referred(window.get()).VisibleRange()->Height() < top + height;
        })) {
      STEP(top = placing.Sheet().Cells(1, column)->Top());
      STEP(left = left + width);
    }

    STEP(placing.ShapeAt(placing.last)->Left(left));
    STEP(placing.ShapeAt(placing.last)->Top(top));
    STEP(placing.ShapeAt(placing.last)->Height(height));
    STEP(placing.ShapeAt(placing.last)->Width(width));
    placing.FillWithPlot(height, width);
    placing.MakeTitleATag();
    frame.pop();
  });
}

namespace {

void ChartPlacing::FindShapes() {
  std::int32_t highest = 0;
  for (const std::int32_t i : frame.loop([&] { return Bounds{1, Sheet().Shapes()->Count()}; })) {
    std::int32_t index = 0;
    std::int32_t place = 0;
    frame.ignore_failures();  // not every shape is a chart
    STEP(index = Sheet().Shapes()->Item(i)->Chart()->Index());
    STEP(place = Sheet().Shapes()->Item(i)->ZOrderPosition());
    frame.report_failures();
    if (index > highest) {
      previous = last;
      last = place;
      highest = index;
    }
  }
}

void ChartPlacing::FillWithPlot(std::int16_t height, double width) {
  STEP(chart.PlotArea()->Left(0));
  STEP(chart.PlotArea()->Top(0));
  // A product of 16-bit integers: error 6 for heights above 3276.
  STEP(chart.PlotArea()->Height(RoundToInt16(height * kPlotExcess)));
  STEP(chart.PlotArea()->Width(width * kPlotExcess));
}

// A small tag at the foot of the chart.
void ChartPlacing::MakeTitleATag() {
  STEP(chart.ChartTitle()->Top(chart.PlotArea()->Height()));
  if (frame.test([&] { return chart.HasAxis(host::excel::xlValue, host::excel::xlPrimary); })) {
    STEP(chart.ChartTitle()->Left(chart.PlotArea()->Width()));
  } else {
    STEP(chart.ChartTitle()->Left(0));
  }
  STEP(chart.ChartTitle()->Shadow(false));
  STEP(chart.ChartTitle()->Border()->ColorIndex(kTitleFrameColor));
  STEP(chart.ChartTitle()->Border()->Weight(host::excel::xlHairline));
  STEP(chart.ChartTitle()->Border()->LineStyle(host::excel::xlContinuous));
  STEP(chart.ChartTitle()->Interior()->ColorIndex(kTitleGroundColor));
  STEP(chart.ChartTitle()->Interior()->PatternColorIndex(kTitlePatternColor));
  STEP(chart.ChartTitle()->Interior()->Pattern(host::excel::xlPatternSolid));
}

}  // namespace

}  // namespace mirelo
