#include "adapters/calc/charts/office_chart.h"

#include <algorithm>
#include <cmath>
#include <com/sun/star/chart/X3DDisplay.hpp>
#include <com/sun/star/chart/XAxisXSupplier.hpp>
#include <com/sun/star/chart/XAxisYSupplier.hpp>
#include <com/sun/star/chart2/XChartDocument.hpp>
#include <com/sun/star/chart2/XChartTypeContainer.hpp>
#include <com/sun/star/chart2/XCoordinateSystemContainer.hpp>
#include <com/sun/star/chart2/XDataSeriesContainer.hpp>
#include <com/sun/star/chart2/data/XDataSource.hpp>
#include <string>

#include "adapters/calc/charts/office_kinds.h"
#include "adapters/calc/objects/office_text.h"

namespace mirelo::calc {

namespace chart = css::chart;
namespace chart2 = css::chart2;

Properties OfficeChart::Wall() const {
  return Properties(As<chart::X3DDisplay>(document->getDiagram())->getWall());
}

Properties OfficeChart::ValueAxis() const {
  return Properties(As<chart::XAxisYSupplier>(document->getDiagram())->getYAxis());
}

Properties OfficeChart::CategoryAxis() const {
  return Properties(As<chart::XAxisXSupplier>(document->getDiagram())->getXAxis());
}

Properties OfficeChart::ValueGrid() const {
  return Properties(As<chart::XAxisYSupplier>(document->getDiagram())->getYMainGrid());
}

Properties OfficeChart::CategoryGrid() const {
  return Properties(As<chart::XAxisXSupplier>(document->getDiagram())->getXMainGrid());
}

const spreadsheet::ChartKind& OfficeChart::Kind() const {
  const std::string diagram = TextOf(document->getDiagram()->getDiagramType());
  const auto known = std::ranges::find(kOfficeKinds, diagram, &OfficeKind::diagram);
  return known == kOfficeKinds.end() ? spreadsheet::kColumnKind : *known->kind;
}

std::vector<SeriesReference> OfficeChart::Series() const {
  std::vector<SeriesReference> all;
  const auto diagram = As<chart2::XChartDocument>(document)->getFirstDiagram();
  if (!diagram.is()) return all;
  for (const auto& system : As<chart2::XCoordinateSystemContainer>(diagram)->getCoordinateSystems()) {
    for (const auto& type : As<chart2::XChartTypeContainer>(system)->getChartTypes()) {
      for (const auto& series : As<chart2::XDataSeriesContainer>(type)->getDataSeries())
        all.push_back(series);
    }
  }
  return all;
}

Reference<chart2::data::XDataSequence> ValuesOf(const SeriesReference& series) {
  for (const auto& sequence : As<chart2::data::XDataSource>(series)->getDataSequences()) {
    if (sequence->getValues().is()) return sequence->getValues();
  }
  return {};
}

sal_Int32 LengthOf(double points) { return static_cast<sal_Int32>(std::lround(points * 2540 / 72)); }

}  // namespace mirelo::calc
