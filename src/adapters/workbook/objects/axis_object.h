#pragma once

#include <memory>
#include <utility>

#include "adapters/workbook/objects/chart_place.h"
#include "host/excel/chart_parts.h"

namespace mirelo::workbook {

class AxisObject final : public host::excel::Axis {
 public:
  explicit AxisObject(ChartPart<ChartAxis> axis) : axis_(std::move(axis)) {}

  std::shared_ptr<host::excel::TickLabels> TickLabels() override;
  bool HasMajorGridlines() override { return axis_().gridlines; }
  void HasMajorGridlines(bool on) override;
  std::shared_ptr<host::excel::Gridlines> MajorGridlines() override;

 private:
  ChartPart<ChartAxis> axis_;
};

}  // namespace mirelo::workbook
