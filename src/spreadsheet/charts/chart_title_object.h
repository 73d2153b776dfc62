#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "host/excel/chart_parts.h"
#include "spreadsheet/charts/chart_place.h"

namespace mirelo::spreadsheet {

class ChartTitleObject final : public host::excel::ChartTitle {
 public:
  explicit ChartTitleObject(ChartPlace place);

  std::string Text() override { return Title().text; }
  void Text(std::string_view text) override;
  std::shared_ptr<host::excel::Characters> Characters() override;
  std::shared_ptr<host::excel::Font> Font() override;
  bool AutoScaleFont() override { return Title().scales; }
  void AutoScaleFont(bool on) override {
    title_.Change([on](spreadsheet::ChartTitle& title) { title.scales = on; });
  }
  double Left() override;
  void Left(double points) override;
  double Top() override;
  void Top(double points) override;
  bool Shadow() override { return Title().shadow; }
  void Shadow(bool on) override {
    title_.Change([on](spreadsheet::ChartTitle& title) { title.shadow = on; });
  }
  std::shared_ptr<host::excel::Border> Border() override;
  std::shared_ptr<host::excel::Interior> Interior() override;

 private:
  // Error 1004 when the chart or its title is gone.
  const spreadsheet::ChartTitle& Title() const { return title_.Get(); }
  // Moves the title by move(spreadsheet::ChartTitle&), and back to the chart's edge.
  template <class Function>
  void Move(Function&& move);

  ChartPlace place_;
  ChartPart<spreadsheet::ChartTitle> title_;
};

}  // namespace mirelo::spreadsheet
