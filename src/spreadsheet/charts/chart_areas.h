#pragma once

#include <memory>
#include <utility>

#include "host/excel/chart_parts.h"
#include "spreadsheet/charts/chart_place.h"

namespace mirelo::spreadsheet {

class ChartAreaObject final : public host::excel::ChartArea {
 public:
  explicit ChartAreaObject(ChartPlace place) : place_(std::move(place)) {}

  std::shared_ptr<host::excel::ChartFillFormat> Fill() override;

 private:
  ChartPlace place_;
};

class PlotAreaObject final : public host::excel::PlotArea {
 public:
  explicit PlotAreaObject(ChartPlace place) : place_(std::move(place)) {}

  double Left() override { return Box().left; }
  void Left(double points) override;
  double Top() override { return Box().top; }
  void Top(double points) override;
  double Width() override { return Box().width; }
  void Width(double points) override;
  double Height() override { return Box().height; }
  void Height(double points) override;
  std::shared_ptr<host::excel::Border> Border() override;
  std::shared_ptr<host::excel::ChartFillFormat> Fill() override;

 private:
  ChartBox Box() const;
  void Box(const ChartBox& box);

  ChartPlace place_;
};

}  // namespace mirelo::spreadsheet
