#include "automation_server/excel/tables.h"
#include "automation_server/rows.h"
#include "host/excel/border.h"
#include "host/excel/chart.h"
#include "host/excel/chart_object.h"
#include "host/excel/chart_parts.h"
#include "host/excel/range.h"
#include "host/excel/series.h"
#include "host/excel/worksheet.h"

namespace mirelo::automation_server::excel {

using host::excel::Chart;
using host::excel::ChartObject;
using host::excel::Point;
using host::excel::Series;
using host::excel::XlAxisGroup;
using host::excel::XlAxisType;

namespace {

bool HasAxis(Chart& chart, XlAxisType type, XlAxisGroup group) { return chart.HasAxis(type, group); }
void PutHasAxis(Chart& chart, bool on, XlAxisType type, XlAxisGroup group) { chart.HasAxis(type, group, on); }

Class ChartClass() {
  using Self = Chart;
  using host::excel::xlPrimary;
  return HandedOut<Self>(
      "Chart", {
                   GET_LET(Name),
                   GET(Type),
                   METHOD(Select),
                   GET(Parent),
                   GET(Index),
                   GET_LET(ChartType),
                   METHOD(SetSourceData, "Source", "PlotBy"),
                   METHOD(Location, "Where", "Name"),
                   IndexedRow("HasAxis", &HasAxis, &PutHasAxis, "Index1", Optional("Index2", xlPrimary)),
                   METHOD(Axes, "Type", Optional("AxisGroup", xlPrimary)),
                   GET_LET(HasLegend),
                   GET_LET(HasTitle),
                   GET(ChartTitle),
                   GET(ChartArea),
                   GET(PlotArea),
                   METHOD(SeriesCollection, "Index"),
               });
}

Class ChartObjectClass() {
  using Self = ChartObject;
  return HandedOut<Self>("ChartObject", {GET(Parent)});
}

Class SeriesClass() {
  using Self = Series;
  return HandedOut<Self>("Series", {
                                       GET_LET(Values),
                                       GET(Border),
                                       GET_LET(MarkerStyle),
                                       GET_LET(MarkerSize),
                                       GET_LET(MarkerBackgroundColorIndex),
                                       GET_LET(MarkerForegroundColorIndex),
                                       GET_LET(Smooth),
                                       GET_LET(Shadow),
                                       METHOD(Points, "Index"),
                                   });
}

Class PointClass() {
  using Self = Point;
  return HandedOut<Self>(
      "Point", {GET(Border), GET_LET(MarkerBackgroundColorIndex), GET_LET(MarkerForegroundColorIndex)});
}

}  // namespace

void AddChartClasses(std::vector<Class>& classes) {
  classes.push_back(ChartClass());
  classes.push_back(ChartObjectClass());
  classes.push_back(SeriesClass());
  classes.push_back(PointClass());
}

}  // namespace mirelo::automation_server::excel
