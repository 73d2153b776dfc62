// One new chart on a sheet.

#include <cstdint>
#include <memory>
#include <string>

#include "automation/variant.h"
#include "charts/worksheet_of.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "host/excel/application.h"
#include "host/excel/border.h"
#include "host/excel/chart.h"
#include "host/excel/chart_parts.h"
#include "host/excel/charts.h"
#include "host/excel/font.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"

namespace mirelo {

using host::excel::Axis;
using host::excel::Chart;
using host::excel::Workbook;
using host::excel::Worksheet;

namespace {

constexpr double kFontSize = 8;
constexpr std::int32_t kPlotFrameColor = 56;
constexpr std::int32_t kGridlineColor = 16;

// A chart while it is made. The statements are those of Add_Chart.
struct NewChart {
  Frame& frame;
  std::shared_ptr<Chart> made = nullptr;

  void ShowTickLabels();
  void ShowTitle(const std::string& title);
  void DrawLines();

  Chart& chart() const { return Referred(made.get()); }
  std::shared_ptr<Axis> ValueAxis() const {
    return chart().Axes(host::excel::xlValue, host::excel::xlPrimary);
  }
};

}  // namespace

std::shared_ptr<Chart> frmMirelo::Add_Chart(const std::string& Chart_Title, const std::string& SheetName,
                                            const std::string& Chart_SourceDataRange,
                                            const std::string& /*Chart_Range*/,
                                            const std::string& /*Labels_Range*/, bool Add_X_Axis,
                                            bool Add_Y_Axis, std::int32_t ChartType) {
  using namespace host::excel;
  return Function<std::shared_ptr<Chart>>(
      "Mirelo.frmMirelo.Add_Chart", {}, [&](Frame& frame, std::shared_ptr<Chart>& result) {
        std::shared_ptr<Workbook> book;
        std::shared_ptr<Worksheet> sheet;
        NewChart made{frame};
        STEP(book = Excel().ActiveWorkbook());
        STEP(made.made = Referred(book.get()).Charts()->Add());
        STEP(sheet = WorksheetOf(Referred(book.get()).Sheets(SheetName)));
        STEP(made.chart().ChartType(static_cast<XlChartType>(ChartType)));
        STEP(made.chart().SetSourceData(*Referred(sheet.get()).Range(Chart_SourceDataRange), xlColumns));
        STEP(made.made = made.chart().Location(xlLocationAsObject, SheetName));
        STEP(made.chart().HasAxis(xlCategory, xlPrimary, Add_X_Axis));
        STEP(made.chart().HasAxis(xlValue, xlPrimary, Add_Y_Axis));
        STEP(made.chart().HasLegend(false));
        made.ShowTickLabels();
        made.ShowTitle(Chart_Title);
        made.DrawLines();
        // So that the chart does not stay selected.
        STEP(Referred(sheet.get()).Range("A1")->Select());
        STEP(result = made.made);
        frame.pop();
      });
}

namespace {

void NewChart::ShowTickLabels() {
  if (frame.test([&] { return chart().HasAxis(host::excel::xlValue, host::excel::xlPrimary); })) {
    STEP(ValueAxis()->TickLabels()->AutoScaleFont(false));
    STEP(ValueAxis()->TickLabels()->Font()->Size(kFontSize));
  }
}

void NewChart::ShowTitle(const std::string& title) {
  STEP(chart().HasTitle(true));
  STEP(chart().ChartTitle()->Font()->Bold(false));
  STEP(chart().ChartTitle()->Font()->Size(kFontSize));
  STEP(chart().ChartTitle()->Text(title));
  STEP(chart().ChartTitle()->AutoScaleFont(false));
}

void NewChart::DrawLines() {
  STEP(chart().PlotArea()->Border()->ColorIndex(kPlotFrameColor));
  STEP(chart().PlotArea()->Border()->Weight(host::excel::xlThin));
  STEP(chart().PlotArea()->Border()->LineStyle(host::excel::xlContinuous));
  STEP(ValueAxis()->HasMajorGridlines(true));
  STEP(ValueAxis()->MajorGridlines()->Border()->ColorIndex(kGridlineColor));
  STEP(ValueAxis()->MajorGridlines()->Border()->Weight(host::excel::xlHairline));
  STEP(ValueAxis()->MajorGridlines()->Border()->LineStyle(host::excel::xlDot));
}

}  // namespace

}  // namespace mirelo
