#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "spreadsheet/charts/series_object.h"

namespace mirelo::spreadsheet {

// The index that a client reads from, and sets on, a marker's colour. Error 1004 for numbers that are no
// index.
std::int32_t IndexOf(const PointColor& color);
PointColor PointColorOf(std::int32_t index);

class PointObject final : public host::excel::Point {
 public:
  // Error 1004 when the series has no such point. `index` is counted from 0.
  PointObject(SeriesPlace series, std::int32_t index);

  std::shared_ptr<host::excel::Border> Border() override;
  std::int32_t MarkerBackgroundColorIndex() override;
  void MarkerBackgroundColorIndex(std::int32_t index) override;
  std::int32_t MarkerForegroundColorIndex() override;
  void MarkerForegroundColorIndex(std::int32_t index) override;

 private:
  SeriesPlace series_;
  std::int32_t index_;
};

}  // namespace mirelo::spreadsheet
