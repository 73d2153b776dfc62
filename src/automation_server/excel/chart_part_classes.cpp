#include "automation_server/excel/tables.h"
#include "automation_server/rows.h"
#include "host/excel/border.h"
#include "host/excel/chart_parts.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"

namespace mirelo::automation_server::excel {

using host::excel::Axis;
using host::excel::Characters;
using host::excel::ChartArea;
using host::excel::ChartColorFormat;
using host::excel::ChartFillFormat;
using host::excel::ChartTitle;
using host::excel::Gridlines;
using host::excel::PlotArea;
using host::excel::TickLabels;

namespace {

Class AxisClass() {
  using Self = Axis;
  return HandedOut<Self>("Axis", {GET(TickLabels), GET_LET(HasMajorGridlines), GET(MajorGridlines)});
}

Class TickLabelsClass() {
  using Self = TickLabels;
  return HandedOut<Self>("TickLabels", {GET(Font), GET_LET(AutoScaleFont)});
}

Class GridlinesClass() {
  using Self = Gridlines;
  return HandedOut<Self>("Gridlines", {GET(Border)});
}

Class CharactersClass() {
  using Self = Characters;
  return HandedOut<Self>("Characters", {GET_LET(Text)});
}

Class ChartTitleClass() {
  using Self = ChartTitle;
  return HandedOut<Self>("ChartTitle", {
                                           GET_LET(Text),
                                           GET(Characters),
                                           GET(Font),
                                           GET_LET(AutoScaleFont),
                                           GET_LET(Left),
                                           GET_LET(Top),
                                           GET_LET(Shadow),
                                           GET(Border),
                                           GET(Interior),
                                       });
}

Class ChartAreaClass() {
  using Self = ChartArea;
  return HandedOut<Self>("ChartArea", {GET(Fill)});
}

Class PlotAreaClass() {
  using Self = PlotArea;
  return HandedOut<Self>(
      "PlotArea", {GET_LET(Left), GET_LET(Top), GET_LET(Width), GET_LET(Height), GET(Border), GET(Fill)});
}

Class ChartFillFormatClass() {
  using Self = ChartFillFormat;
  return HandedOut<Self>("ChartFillFormat", {
                                                METHOD(TwoColorGradient, "Style", "Variant"),
                                                GET_LET(Visible),
                                                GET(ForeColor),
                                                GET(BackColor),
                                            });
}

Class ChartColorFormatClass() {
  using Self = ChartColorFormat;
  return HandedOut<Self>("ChartColorFormat", {GET_LET(SchemeColor)});
}

}  // namespace

void AddChartPartClasses(std::vector<Class>& classes) {
  classes.push_back(AxisClass());
  classes.push_back(TickLabelsClass());
  classes.push_back(GridlinesClass());
  classes.push_back(CharactersClass());
  classes.push_back(ChartTitleClass());
  classes.push_back(ChartAreaClass());
  classes.push_back(PlotAreaClass());
  classes.push_back(ChartFillFormatClass());
  classes.push_back(ChartColorFormatClass());
}

}  // namespace mirelo::automation_server::excel
