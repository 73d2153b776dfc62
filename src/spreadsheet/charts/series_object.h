#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "host/excel/series.h"
#include "spreadsheet/charts/chart_place.h"

namespace mirelo::spreadsheet {

// A series of a chart, by its number.
class SeriesPlace {
 public:
  SeriesPlace(ChartPlace chart, std::size_t index) : chart_(std::move(chart)), index_(index) {}

  // Error 1004 when the chart has no such series any more.
  const ChartSeries& Get() const { return In(chart_.home().Get()); }
  // Changes the series by change(ChartSeries&), as ChartPlace::Change does.
  template <class Function>
  void Change(Function&& change) const {
    chart_.Change([&](Chart& chart) { change(In(chart)); });
  }
  ChartHome& home() const { return chart_.home(); }

 private:
  ChartSeries& In(Chart& chart) const;

  ChartPlace chart_;
  std::size_t index_;
};

class SeriesObject final : public host::excel::Series {
 public:
  explicit SeriesObject(SeriesPlace place) : place_(std::move(place)) {}

  Variant Values() override;
  void Values(const Variant& range) override;
  std::shared_ptr<host::excel::Border> Border() override;
  std::int32_t MarkerStyle() override { return place_.Get().marker; }
  void MarkerStyle(std::int32_t style) override;
  std::int32_t MarkerSize() override { return place_.Get().marker_size; }
  void MarkerSize(std::int32_t points) override;
  std::int32_t MarkerBackgroundColorIndex() override;
  void MarkerBackgroundColorIndex(std::int32_t index) override;
  std::int32_t MarkerForegroundColorIndex() override;
  void MarkerForegroundColorIndex(std::int32_t index) override;
  bool Smooth() override { return place_.Get().smooth; }
  void Smooth(bool on) override {
    place_.Change([on](ChartSeries& series) { series.smooth = on; });
  }
  bool Shadow() override { return place_.Get().shadow; }
  void Shadow(bool on) override {
    place_.Change([on](ChartSeries& series) { series.shadow = on; });
  }
  std::shared_ptr<host::excel::Point> Points(std::int32_t index) override;

 private:
  SeriesPlace place_;
};

}  // namespace mirelo::spreadsheet
