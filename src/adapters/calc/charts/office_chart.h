#pragma once

#include <com/sun/star/chart/XChartDocument.hpp>
#include <com/sun/star/chart2/XDataSeries.hpp>
#include <com/sun/star/chart2/data/XDataSequence.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <vector>

#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/properties.h"
#include "spreadsheet/charts/chart_kind.h"

namespace mirelo::calc {

// A chart in a document of the office: what floats over the cells, and the document of its own that it shows.
struct OfficeChart {
  Reference<css::drawing::XShape> shape;
  Reference<css::chart::XChartDocument> document;

  Properties Whole() const { return Properties(document); }
  Properties Diagram() const { return Properties(document->getDiagram()); }
  Properties Area() const { return Properties(document->getArea()); }
  Properties Wall() const;
  Properties Title() const { return Properties(document->getTitle()); }
  Properties ValueAxis() const;
  Properties CategoryAxis() const;
  Properties ValueGrid() const;
  Properties CategoryGrid() const;

  // The kind of columns where the diagram, such as a pie, is of none of ours.
  const spreadsheet::ChartKind& Kind() const;
  std::vector<Reference<css::chart2::XDataSeries>> Series() const;
};

using SeriesReference = Reference<css::chart2::XDataSeries>;

// What a series plots; null when that is nothing.
Reference<css::chart2::data::XDataSequence> ValuesOf(const SeriesReference& series);

// A length of the office, hundredths of millimetres, in points and back.
constexpr double PointsOf(sal_Int32 length) { return length * 72.0 / 2540; }
sal_Int32 LengthOf(double points);

}  // namespace mirelo::calc
