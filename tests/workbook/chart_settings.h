#pragma once

#include <functional>
#include <vector>

#include "spreadsheet/charts/chart.h"

namespace mirelo::testing {

// A change of a chart that must be found in the file.
struct ChartSetting {
  const char* name;
  std::function<void(spreadsheet::Chart&)> make;
};

// One for each field of a chart, and more where a field has several meanings.
const std::vector<ChartSetting>& ChartSettings();

}  // namespace mirelo::testing
