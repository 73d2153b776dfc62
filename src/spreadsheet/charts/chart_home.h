#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "spreadsheet/charts/chart.h"

namespace mirelo::spreadsheet {

// Cells of a worksheet that can be plotted.
struct PlottedCells {
  std::shared_ptr<CellSource> sheet;
  Area area;
};

// A chart where it lies, on a worksheet or on a sheet of its own: what its spreadsheet knows of it, and does
// for it. Members raise error 1004 when the chart is no longer there.
class ChartHome {
 public:
  virtual ~ChartHome() = default;

  // The chart as it is now. What is changed of it is told by Changed.
  virtual Chart& Get() = 0;
  virtual void Changed() = 0;

  // The place among the charts of its worksheet, or among the chart sheets, from 1.
  virtual std::int32_t Index() = 0;
  // Brings the chart's sheet to the front, and selects a chart that lies on a worksheet. Error 1004 also for
  // a hidden sheet.
  virtual void Select() = 0;
  // Takes the chart off its worksheet.
  virtual void Delete() = 0;

  // The worksheet on which it lies; null for a chart sheet.
  virtual std::shared_ptr<host::excel::Worksheet> Worksheet() = 0;
  virtual std::shared_ptr<host::excel::Workbook> Workbook() = 0;
  // The size of that worksheet.
  virtual ChartBox WholeSheet() = 0;

  // Names a chart sheet. Error 1004 for names that it may not bear.
  virtual void Rename(std::string_view name) = 0;
  // Moves the chart onto a worksheet as host::excel::Chart::Location does, and is dead then. Errors as there.
  virtual std::shared_ptr<ChartHome> MoveTo(std::string_view worksheet) = 0;

  // The cells of a range; nothing when they are not of the chart's workbook.
  virtual std::optional<PlottedCells> CellsOf(host::excel::Range& range) = 0;
};

}  // namespace mirelo::spreadsheet
