#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/workbook/objects/chart_place.h"
#include "host/excel/chart_parts.h"

namespace mirelo::workbook {

class ChartTitleObject final : public host::excel::ChartTitle {
 public:
  explicit ChartTitleObject(ChartPlace place) : place_(std::move(place)) {}

  std::string Text() override { return Title().text; }
  void Text(std::string_view text) override;
  std::shared_ptr<host::excel::Characters> Characters() override;
  std::shared_ptr<host::excel::Font> Font() override;
  bool AutoScaleFont() override { return Title().scales; }
  void AutoScaleFont(bool on) override { Title().scales = on; }
  double Left() override;
  void Left(double points) override;
  double Top() override;
  void Top(double points) override;
  bool Shadow() override { return Title().shadow; }
  void Shadow(bool on) override { Title().shadow = on; }
  std::shared_ptr<host::excel::Border> Border() override;
  std::shared_ptr<host::excel::Interior> Interior() override;

 private:
  // Error 1004 when the chart or its title is gone.
  workbook::ChartTitle& Title() const { return TitleOf(place_); }
  static workbook::ChartTitle& TitleOf(const ChartPlace& place);
  ChartPart<workbook::ChartTitle> Part() const;

  ChartPlace place_;
};

}  // namespace mirelo::workbook
