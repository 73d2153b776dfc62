#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/excel/late.h"
#include "automation/variant.h"
#include "host/excel/border.h"
#include "host/excel/chart_parts.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"

namespace mirelo::excel {

namespace {

class LateChartColorFormat : public LateOf<host::excel::ChartColorFormat> {
 public:
  using LateOf::LateOf;

  std::int32_t SchemeColor() override { return Get("SchemeColor"); }
  void SchemeColor(std::int32_t index) override { Let("SchemeColor", index); }
};

class LateChartFillFormat : public LateOf<host::excel::ChartFillFormat> {
 public:
  using LateOf::LateOf;

  void TwoColorGradient(host::excel::MsoGradientStyle style, std::int32_t variant) override {
    Get("TwoColorGradient", style, variant);
  }
  host::excel::MsoTriState Visible() override { return Get("Visible"); }
  void Visible(host::excel::MsoTriState visible) override { Let("Visible", visible); }
  std::shared_ptr<host::excel::ChartColorFormat> ForeColor() override { return Get("ForeColor"); }
  std::shared_ptr<host::excel::ChartColorFormat> BackColor() override { return Get("BackColor"); }
};

class LateGridlines : public LateOf<host::excel::Gridlines> {
 public:
  using LateOf::LateOf;

  std::shared_ptr<host::excel::Border> Border() override { return Get("Border"); }
};

class LateTickLabels : public LateOf<host::excel::TickLabels> {
 public:
  using LateOf::LateOf;

  std::shared_ptr<host::excel::Font> Font() override { return Get("Font"); }
  bool AutoScaleFont() override { return Get("AutoScaleFont"); }
  void AutoScaleFont(bool on) override { Let("AutoScaleFont", on); }
};

class LateAxis : public LateOf<host::excel::Axis> {
 public:
  using LateOf::LateOf;

  std::shared_ptr<host::excel::TickLabels> TickLabels() override { return Get("TickLabels"); }
  bool HasMajorGridlines() override { return Get("HasMajorGridlines"); }
  void HasMajorGridlines(bool on) override { Let("HasMajorGridlines", on); }
  std::shared_ptr<host::excel::Gridlines> MajorGridlines() override { return Get("MajorGridlines"); }
};

class LateCharacters : public LateOf<host::excel::Characters> {
 public:
  using LateOf::LateOf;

  std::string Text() override { return Get("Text"); }
  void Text(std::string_view text) override { Let("Text", text); }
};

class LateChartTitle : public LateOf<host::excel::ChartTitle> {
 public:
  using LateOf::LateOf;

  std::string Text() override { return Get("Text"); }
  void Text(std::string_view text) override { Let("Text", text); }
  std::shared_ptr<host::excel::Characters> Characters() override { return Get("Characters"); }
  std::shared_ptr<host::excel::Font> Font() override { return Get("Font"); }
  bool AutoScaleFont() override { return Get("AutoScaleFont"); }
  void AutoScaleFont(bool on) override { Let("AutoScaleFont", on); }
  double Left() override { return Get("Left"); }
  void Left(double points) override { Let("Left", points); }
  double Top() override { return Get("Top"); }
  void Top(double points) override { Let("Top", points); }
  bool Shadow() override { return Get("Shadow"); }
  void Shadow(bool on) override { Let("Shadow", on); }
  std::shared_ptr<host::excel::Border> Border() override { return Get("Border"); }
  std::shared_ptr<host::excel::Interior> Interior() override { return Get("Interior"); }
};

class LateChartArea : public LateOf<host::excel::ChartArea> {
 public:
  using LateOf::LateOf;

  std::shared_ptr<host::excel::ChartFillFormat> Fill() override { return Get("Fill"); }
};

class LatePlotArea : public LateOf<host::excel::PlotArea> {
 public:
  using LateOf::LateOf;

  double Left() override { return Get("Left"); }
  void Left(double points) override { Let("Left", points); }
  double Top() override { return Get("Top"); }
  void Top(double points) override { Let("Top", points); }
  double Width() override { return Get("Width"); }
  void Width(double points) override { Let("Width", points); }
  double Height() override { return Get("Height"); }
  void Height(double points) override { Let("Height", points); }
  std::shared_ptr<host::excel::Border> Border() override { return Get("Border"); }
  std::shared_ptr<host::excel::ChartFillFormat> Fill() override { return Get("Fill"); }
};

}  // namespace

template <>
std::shared_ptr<host::excel::ChartColorFormat> As(const Variant& result) {
  return LateObject<LateChartColorFormat>(result);
}
template <>
std::shared_ptr<host::excel::ChartFillFormat> As(const Variant& result) {
  return LateObject<LateChartFillFormat>(result);
}
template <>
std::shared_ptr<host::excel::Gridlines> As(const Variant& result) {
  return LateObject<LateGridlines>(result);
}
template <>
std::shared_ptr<host::excel::TickLabels> As(const Variant& result) {
  return LateObject<LateTickLabels>(result);
}
template <>
std::shared_ptr<host::excel::Axis> As(const Variant& result) {
  return LateObject<LateAxis>(result);
}
template <>
std::shared_ptr<host::excel::Characters> As(const Variant& result) {
  return LateObject<LateCharacters>(result);
}
template <>
std::shared_ptr<host::excel::ChartTitle> As(const Variant& result) {
  return LateObject<LateChartTitle>(result);
}
template <>
std::shared_ptr<host::excel::ChartArea> As(const Variant& result) {
  return LateObject<LateChartArea>(result);
}
template <>
std::shared_ptr<host::excel::PlotArea> As(const Variant& result) {
  return LateObject<LatePlotArea>(result);
}

}  // namespace mirelo::excel
