#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/excel/late.h"
#include "automation/variant.h"
#include "host/excel/border.h"
#include "host/excel/chart.h"
#include "host/excel/chart_object.h"
#include "host/excel/chart_parts.h"
#include "host/excel/range.h"
#include "host/excel/series.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"

namespace mirelo::excel {

namespace {

class LatePoint : public LateOf<host::excel::Point> {
 public:
  using LateOf::LateOf;

  std::shared_ptr<host::excel::Border> Border() override { return Get("Border"); }
  std::int32_t MarkerBackgroundColorIndex() override { return Get("MarkerBackgroundColorIndex"); }
  void MarkerBackgroundColorIndex(std::int32_t index) override { Let("MarkerBackgroundColorIndex", index); }
  std::int32_t MarkerForegroundColorIndex() override { return Get("MarkerForegroundColorIndex"); }
  void MarkerForegroundColorIndex(std::int32_t index) override { Let("MarkerForegroundColorIndex", index); }
};

class LateSeries : public LateOf<host::excel::Series> {
 public:
  using LateOf::LateOf;

  Variant Values() override { return Get("Values"); }
  void Values(const Variant& range) override { Let("Values", range); }
  std::shared_ptr<host::excel::Border> Border() override { return Get("Border"); }
  std::int32_t MarkerStyle() override { return Get("MarkerStyle"); }
  void MarkerStyle(std::int32_t style) override { Let("MarkerStyle", style); }
  std::int32_t MarkerSize() override { return Get("MarkerSize"); }
  void MarkerSize(std::int32_t points) override { Let("MarkerSize", points); }
  std::int32_t MarkerBackgroundColorIndex() override { return Get("MarkerBackgroundColorIndex"); }
  void MarkerBackgroundColorIndex(std::int32_t index) override { Let("MarkerBackgroundColorIndex", index); }
  std::int32_t MarkerForegroundColorIndex() override { return Get("MarkerForegroundColorIndex"); }
  void MarkerForegroundColorIndex(std::int32_t index) override { Let("MarkerForegroundColorIndex", index); }
  bool Smooth() override { return Get("Smooth"); }
  void Smooth(bool on) override { Let("Smooth", on); }
  bool Shadow() override { return Get("Shadow"); }
  void Shadow(bool on) override { Let("Shadow", on); }
  std::shared_ptr<host::excel::Point> Points(std::int32_t index) override { return Get("Points", index); }
};

class LateChartObject : public LateOf<host::excel::ChartObject> {
 public:
  using LateOf::LateOf;

  std::shared_ptr<host::excel::Worksheet> Parent() override { return Get("Parent"); }
};

class LateChart : public LateOf<host::excel::Chart> {
 public:
  using LateOf::LateOf;

  void Name(std::string_view name) override { Let("Name", name); }
  void Select() override { Get("Select"); }
  std::string Name() override { return Get("Name"); }
  std::shared_ptr<Object> Parent() override {
    const Variant parent = Get("Parent");
    if (parent.TypeName() == "Workbook") return As<host::excel::Workbook>(parent);
    return As<host::excel::ChartObject>(parent);
  }
  std::int32_t Index() override { return Get("Index"); }
  host::excel::XlChartType ChartType() override { return Get("ChartType"); }
  void ChartType(host::excel::XlChartType type) override { Let("ChartType", type); }
  void SetSourceData(host::excel::Range& source, host::excel::XlRowCol by) override {
    Get("SetSourceData", source, by);
  }
  std::shared_ptr<host::excel::Chart> Location(host::excel::XlChartLocation where,
                                               std::string_view name) override {
    return Get("Location", where, name);
  }
  bool HasAxis(host::excel::XlAxisType type, host::excel::XlAxisGroup group) override {
    return Get("HasAxis", type, group);
  }
  void HasAxis(host::excel::XlAxisType type, host::excel::XlAxisGroup group, bool on) override {
    Let("HasAxis", on, type, group);
  }
  std::shared_ptr<host::excel::Axis> Axes(host::excel::XlAxisType type,
                                          host::excel::XlAxisGroup group) override {
    return Get("Axes", type, group);
  }
  bool HasLegend() override { return Get("HasLegend"); }
  void HasLegend(bool on) override { Let("HasLegend", on); }
  bool HasTitle() override { return Get("HasTitle"); }
  void HasTitle(bool on) override { Let("HasTitle", on); }
  std::shared_ptr<host::excel::ChartTitle> ChartTitle() override { return Get("ChartTitle"); }
  std::shared_ptr<host::excel::ChartArea> ChartArea() override { return Get("ChartArea"); }
  std::shared_ptr<host::excel::PlotArea> PlotArea() override { return Get("PlotArea"); }
  std::shared_ptr<host::excel::Series> SeriesCollection(std::int32_t index) override {
    return Get("SeriesCollection", index);
  }
};

}  // namespace

template <>
std::shared_ptr<host::excel::Point> As(const Variant& result) {
  return LateObject<LatePoint>(result);
}
template <>
std::shared_ptr<host::excel::Series> As(const Variant& result) {
  return LateObject<LateSeries>(result);
}
template <>
std::shared_ptr<host::excel::ChartObject> As(const Variant& result) {
  return LateObject<LateChartObject>(result);
}
template <>
std::shared_ptr<host::excel::Chart> As(const Variant& result) {
  return LateObject<LateChart>(result);
}

}  // namespace mirelo::excel
