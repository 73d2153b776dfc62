#include "adapters/workbook/objects/axis_object.h"

#include "adapters/workbook/objects/chart_border.h"
#include "adapters/workbook/objects/chart_font.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

namespace excel = host::excel;

namespace {

class TickLabelsObject final : public excel::TickLabels {
 public:
  // `axis` raises error 1004 while the axis is off.
  explicit TickLabelsObject(ChartPart<ChartAxis> axis) : axis_(std::move(axis)) {}

  std::shared_ptr<excel::Font> Font() override {
    axis_();
    return std::make_shared<ChartFont<ChartAxis>>(ChartLetters<ChartAxis>{
        axis_, &ChartAxis::label_bold, &ChartAxis::label_size, &ChartAxis::label_color});
  }
  bool AutoScaleFont() override { return axis_().scales; }
  void AutoScaleFont(bool on) override { axis_().scales = on; }

 private:
  ChartPart<ChartAxis> axis_;
};

class GridlinesObject final : public excel::Gridlines {
 public:
  explicit GridlinesObject(ChartPart<ChartLine> line) : line_(std::move(line)) {}

  std::shared_ptr<excel::Border> Border() override {
    line_();
    return std::make_shared<ChartBorder>(AccessTo(line_));
  }

 private:
  ChartPart<ChartLine> line_;
};

}  // namespace

std::shared_ptr<excel::TickLabels> AxisObject::TickLabels() {
  const ChartPart<ChartAxis> shown = [axis = axis_]() -> ChartAxis& {
    if (!axis().on) throw Refused("This axis is off and has no labels.");
    return axis();
  };
  shown();
  return std::make_shared<TickLabelsObject>(shown);
}

void AxisObject::HasMajorGridlines(bool on) {
  ChartAxis& axis = axis_();
  if (!on) axis.gridline = {};
  axis.gridlines = on;
}

std::shared_ptr<excel::Gridlines> AxisObject::MajorGridlines() {
  const ChartPart<ChartLine> line = [axis = axis_]() -> ChartLine& {
    if (!axis().gridlines) throw Refused("This axis has no gridlines.");
    return axis().gridline;
  };
  line();
  return std::make_shared<GridlinesObject>(line);
}

}  // namespace mirelo::workbook
