#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "automation/variant.h"
#include "host/excel/constants.h"
#include "host/excel/sheet.h"

namespace mirelo::host::excel {

class Axis;
class ChartArea;
class ChartTitle;
class PlotArea;
class Range;
class Series;

// A chart: a sheet of its own, or on a worksheet. Members of a chart that was taken off its sheet raise error
// 1004.
class Chart : public Sheet {
 public:
  std::string_view TypeName() const override { return "Chart"; }
  XlSheetType Type() final { return xlSheetChart; }

  // On a worksheet the sheet's name, a blank and the name of the chart's shape: "Sheet1 Chart 1".
  // It cannot be set then: error 1004.
  std::string Name() override = 0;
  using Sheet::Name;
  // What it lies in: the ChartObject of a chart on a worksheet, the Workbook of a chart sheet.
  virtual std::shared_ptr<Object> Parent() = 0;
  // The place among the charts of its sheet, or among the workbook's chart sheets, from 1.
  virtual std::int32_t Index() = 0;

  // Error 1004 for types other than those of XlChartType.
  virtual XlChartType ChartType() = 0;
  virtual void ChartType(XlChartType type) = 0;
  // Each column of the range is a series from now on, named after nothing; the first ones keep their looks.
  // Error 1004 unless `by` is xlColumns, for more than 255 columns and for cells of another workbook.
  virtual void SetSourceData(Range& source, XlRowCol by) = 0;
  // Moves the chart onto the worksheet of this name, into the middle of the part that the window shows,
  // selects it there and brings the sheet to the front. The result is the chart in its new place; this object
  // must not be used any more. Error 1004 unless `where` is xlLocationAsObject, and for a hidden sheet; 9
  // when no worksheet bears the name.
  virtual std::shared_ptr<Chart> Location(XlChartLocation where, std::string_view name) = 0;

  // Error 1004 for secondary axes, which these charts do not have: they read as false, and cannot be set
  // true.
  virtual bool HasAxis(XlAxisType type, XlAxisGroup group) = 0;
  virtual void HasAxis(XlAxisType type, XlAxisGroup group, bool on) = 0;
  // Also of an axis that is off: its gridlines can be seen all the same. Error 1004 for secondary ones.
  virtual std::shared_ptr<Axis> Axes(XlAxisType type, XlAxisGroup group) = 0;

  // True at the start.
  virtual bool HasLegend() = 0;
  virtual void HasLegend(bool on) = 0;
  // False at the start. A title that comes in anew says "Chart Title".
  virtual bool HasTitle() = 0;
  virtual void HasTitle(bool on) = 0;
  // Error 1004 for a chart without one.
  virtual std::shared_ptr<excel::ChartTitle> ChartTitle() = 0;

  virtual std::shared_ptr<excel::ChartArea> ChartArea() = 0;
  virtual std::shared_ptr<excel::PlotArea> PlotArea() = 0;

  // Counted from 1; error 1004 for one that the chart does not have.
  virtual std::shared_ptr<Series> SeriesCollection(std::int32_t index) = 0;
};

}  // namespace mirelo::host::excel
