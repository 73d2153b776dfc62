#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "host/excel/border.h"
#include "spreadsheet/charts/chart_place.h"

namespace mirelo::spreadsheet {

// How a line of a chart is read and changed.
struct ChartLineAccess {
  std::function<ChartLine()> read;
  std::function<void(const std::function<void(ChartLine&)>&)> change;
};

// Access to one line as it is held: a line of which no other is a copy.
ChartLineAccess AccessTo(const ChartPart<ChartLine>& line);

// A line of a chart: unlike those of cells, each style has each weight, and one that nobody set is automatic.
class ChartBorder final : public host::excel::Border {
 public:
  explicit ChartBorder(ChartLineAccess line) : line_(std::move(line)) {}

  Variant LineStyle() override;
  void LineStyle(std::int32_t style) override;
  Variant Weight() override;
  void Weight(std::int32_t weight) override;
  Variant ColorIndex() override;
  void ColorIndex(std::int32_t index) override;

 private:
  ChartLineAccess line_;
};

}  // namespace mirelo::spreadsheet
