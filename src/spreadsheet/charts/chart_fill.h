#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "host/excel/chart_parts.h"
#include "spreadsheet/charts/chart_place.h"

namespace mirelo::spreadsheet {

class ChartFillObject final : public host::excel::ChartFillFormat {
 public:
  explicit ChartFillObject(ChartPart<ChartFill> fill) : fill_(std::move(fill)) {}

  void TwoColorGradient(host::excel::MsoGradientStyle style, std::int32_t variant) override;
  host::excel::MsoTriState Visible() override;
  void Visible(host::excel::MsoTriState visible) override;
  std::shared_ptr<host::excel::ChartColorFormat> ForeColor() override;
  std::shared_ptr<host::excel::ChartColorFormat> BackColor() override;

 private:
  ChartPart<ChartFill> fill_;
};

}  // namespace mirelo::spreadsheet
