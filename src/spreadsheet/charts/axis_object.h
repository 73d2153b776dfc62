#pragma once

#include <memory>
#include <utility>

#include "host/excel/chart_parts.h"
#include "spreadsheet/charts/chart_place.h"

namespace mirelo::spreadsheet {

class AxisObject final : public host::excel::Axis {
 public:
  explicit AxisObject(ChartPart<ChartAxis> axis) : axis_(std::move(axis)) {}

  std::shared_ptr<host::excel::TickLabels> TickLabels() override;
  bool HasMajorGridlines() override { return axis_.Get().gridlines; }
  void HasMajorGridlines(bool on) override;
  std::shared_ptr<host::excel::Gridlines> MajorGridlines() override;

 private:
  ChartPart<ChartAxis> axis_;
};

}  // namespace mirelo::spreadsheet
