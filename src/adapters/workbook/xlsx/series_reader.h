#pragma once

#include <pugixml.hpp>
#include <string>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/load_budget.h"
#include "adapters/workbook/xlsx/shape_properties_reader.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::workbook {

// Reads the series of one chart's part.
class SeriesReader {
 public:
  // `has_markers`: whether a series of a kind with markers has them where it holds no element "marker".
  SeriesReader(const ShapePropertiesReader& shapes, ChartLosses& losses, LoadBudget& budget,
               const std::string& part, const ChartKind& kind, bool has_markers)
      : shapes_(shapes),
        losses_(losses),
        budget_(budget),
        part_(part),
        kind_(kind),
        has_markers_(has_markers) {}

  struct Result {
    ChartSeries series;
    std::string formula;  // of its cells, which may lie on a sheet that has not been read yet
  };
  Result Read(pugi::xml_node node);

 private:
  void ReadMarker(pugi::xml_node marker, ChartSeries& series) const;
  void ReadColumns(pugi::xml_node node, ChartSeries& series) const;
  void ReadPoints(pugi::xml_node node, ChartSeries& series);
  void ReadPoint(pugi::xml_node node, const ChartSeries& series, ChartPoint& point) const;
  std::string FormulaOf(pugi::xml_node values) const;

  const ShapePropertiesReader& shapes_;
  ChartLosses& losses_;
  LoadBudget& budget_;
  const std::string& part_;
  const ChartKind& kind_;
  bool has_markers_;
};

}  // namespace mirelo::workbook
