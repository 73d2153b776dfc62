#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "adapters/workbook/model/book.h"

namespace mirelo::workbook {

// A chart, and where a client found it. What was found there may be gone by the time it is used.
struct ChartPlace {
  std::shared_ptr<Book> book;
  std::shared_ptr<Sheet> sheet;  // null for a chart sheet
  std::shared_ptr<Chart> chart;

  // The list that the chart is in: the charts of its sheet, or the chart sheets.
  std::vector<std::shared_ptr<Chart>>& All() const;
  // The chart. Error 1004 when it is no longer where it was found.
  Chart& Get() const;
  // The chart's place among All(), from 1. Error 1004 as Get.
  std::int32_t Index() const;
  // Brings the chart's sheet to the front, and selects a chart that lies on a worksheet. Error 1004 as Get,
  // and for a hidden sheet.
  void Select() const;
};

// A part of a chart, found anew at each use; error 1004 when it is gone.
template <class T>
using ChartPart = std::function<T&()>;

// A number as a client gives it for a place or a size. Error 1004 for what is no number.
double CheckedPoints(double points);

}  // namespace mirelo::workbook
