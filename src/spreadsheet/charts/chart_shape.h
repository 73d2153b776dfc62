#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "host/excel/shape.h"
#include "spreadsheet/charts/chart_place.h"

namespace mirelo::spreadsheet {

// A chart on a worksheet, seen as what floats over its cells.
class ChartShape final : public host::excel::Shape {
 public:
  explicit ChartShape(ChartPlace place) : place_(std::move(place)) {}

  host::excel::MsoShapeType Type() override;
  std::string Name() override { return place_.Get().name; }
  std::shared_ptr<host::excel::Chart> Chart() override;
  std::int32_t ZOrderPosition() override { return place_.home().Index(); }
  void Select() override { place_.home().Select(); }
  void Delete() override { place_.home().Delete(); }

  double Left() override { return place_.Get().place.left; }
  void Left(double points) override;
  double Top() override { return place_.Get().place.top; }
  void Top(double points) override;
  double Height() override { return place_.Get().place.height; }
  void Height(double points) override;
  double Width() override { return place_.Get().place.width; }
  void Width(double points) override;
  void ScaleHeight(double factor, host::excel::MsoTriState relative_to_original_size) override;
  void ScaleWidth(double factor, host::excel::MsoTriState relative_to_original_size) override;

 private:
  ChartPlace place_;
};

}  // namespace mirelo::spreadsheet
