#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "host/excel/chart.h"
#include "spreadsheet/charts/chart_place.h"

namespace mirelo::spreadsheet {

class ChartObject final : public host::excel::Chart {
 public:
  explicit ChartObject(ChartPlace place) : place_(std::move(place)) {}

  std::string Name() override;
  void Name(std::string_view name) override;
  std::shared_ptr<Object> Parent() override;
  std::int32_t Index() override { return place_.home().Index(); }
  void Select() override { place_.home().Select(); }

  host::excel::XlChartType ChartType() override;
  void ChartType(host::excel::XlChartType type) override;
  void SetSourceData(host::excel::Range& source, host::excel::XlRowCol by) override;
  std::shared_ptr<host::excel::Chart> Location(host::excel::XlChartLocation where,
                                               std::string_view name) override;

  bool HasAxis(host::excel::XlAxisType type, host::excel::XlAxisGroup group) override;
  void HasAxis(host::excel::XlAxisType type, host::excel::XlAxisGroup group, bool on) override;
  std::shared_ptr<host::excel::Axis> Axes(host::excel::XlAxisType type,
                                          host::excel::XlAxisGroup group) override;

  bool HasLegend() override { return place_.Get().legend; }
  void HasLegend(bool on) override {
    place_.Change([on](spreadsheet::Chart& chart) { chart.legend = on; });
  }
  bool HasTitle() override { return place_.Get().title.has_value(); }
  void HasTitle(bool on) override;
  std::shared_ptr<host::excel::ChartTitle> ChartTitle() override;
  std::shared_ptr<host::excel::ChartArea> ChartArea() override;
  std::shared_ptr<host::excel::PlotArea> PlotArea() override;
  std::shared_ptr<host::excel::Series> SeriesCollection(std::int32_t index) override;

 private:
  ChartPlace place_;
};

}  // namespace mirelo::spreadsheet
