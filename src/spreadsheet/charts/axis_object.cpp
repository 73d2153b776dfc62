#include "spreadsheet/charts/axis_object.h"

#include "spreadsheet/charts/chart_border.h"
#include "spreadsheet/charts/chart_font.h"
#include "spreadsheet/errors.h"

namespace mirelo::spreadsheet {

namespace excel = host::excel;

namespace {

class TickLabelsObject final : public excel::TickLabels {
 public:
  // `axis` raises error 1004 while the axis is off.
  explicit TickLabelsObject(ChartPart<ChartAxis> axis) : axis_(std::move(axis)) {}

  std::shared_ptr<excel::Font> Font() override {
    axis_.Get();
    return std::make_shared<ChartFont<ChartAxis>>(ChartFontMembers<ChartAxis>{
        axis_, &ChartAxis::label_bold, &ChartAxis::label_size, &ChartAxis::label_color});
  }
  bool AutoScaleFont() override { return axis_.Get().scales; }
  void AutoScaleFont(bool on) override {
    axis_.Change([on](ChartAxis& axis) { axis.scales = on; });
  }

 private:
  ChartPart<ChartAxis> axis_;
};

class GridlinesObject final : public excel::Gridlines {
 public:
  explicit GridlinesObject(ChartPart<ChartLine> line) : line_(std::move(line)) {}

  std::shared_ptr<excel::Border> Border() override {
    line_.Get();
    return std::make_shared<ChartBorder>(AccessTo(line_));
  }

 private:
  ChartPart<ChartLine> line_;
};

}  // namespace

std::shared_ptr<excel::TickLabels> AxisObject::TickLabels() {
  const auto shown = axis_.Of<ChartAxis>([](ChartAxis& axis) -> ChartAxis& {
    if (!axis.on) throw Refused("This axis is off and has no labels.");
    return axis;
  });
  shown.Get();
  return std::make_shared<TickLabelsObject>(shown);
}

void AxisObject::HasMajorGridlines(bool on) {
  axis_.Change([on](ChartAxis& axis) {
    if (!on) axis.gridline = {};
    axis.gridlines = on;
  });
}

std::shared_ptr<excel::Gridlines> AxisObject::MajorGridlines() {
  const auto line = axis_.Of<ChartLine>([](ChartAxis& axis) -> ChartLine& {
    if (!axis.gridlines) throw Refused("This axis has no gridlines.");
    return axis.gridline;
  });
  line.Get();
  return std::make_shared<GridlinesObject>(line);
}

}  // namespace mirelo::spreadsheet
