#pragma once

#include <cmath>
#include <functional>
#include <memory>
#include <utility>

#include "spreadsheet/charts/chart_home.h"
#include "spreadsheet/errors.h"

namespace mirelo::spreadsheet {

// A chart as clients hold it: by where it lies. What was found there may be gone by the time it is used, then
// error 1004 is raised.
class ChartPlace {
 public:
  explicit ChartPlace(std::shared_ptr<ChartHome> home) : home_(std::move(home)) {}

  const Chart& Get() const { return home_->Get(); }
  ChartHome& home() const { return *home_; }

  // Changes the chart by change(Chart&). Nothing is changed when that raises an error before it begins.
  template <class Function>
  void Change(Function&& change) const {
    change(home_->Get());
    home_->Changed();
  }

 private:
  std::shared_ptr<ChartHome> home_;
};

// A part of a chart, found anew at each use; error 1004 when it is gone.
template <class T>
class ChartPart {
 public:
  // `find` may raise error 1004, when the chart has no such part any more.
  ChartPart(ChartPlace place, std::function<T&(Chart&)> find)
      : place_(std::move(place)), find_(std::move(find)) {}

  const T& Get() const { return find_(place_.home().Get()); }

  // Changes the part by change(T&), as ChartPlace::Change does.
  template <class Function>
  void Change(Function&& change) const {
    place_.Change([&](Chart& chart) { change(find_(chart)); });
  }

  // A part of this part.
  template <class Part>
  ChartPart<Part> Of(std::function<Part&(T&)> find) const {
    return {place_,
            [own = find_, find = std::move(find)](Chart& chart) -> Part& { return find(own(chart)); }};
  }

 private:
  ChartPlace place_;
  std::function<T&(Chart&)> find_;
};

// A number as a client gives it for a place or a size. Error 1004 for what is no number.
inline double CheckedPoints(double points) {
  if (!std::isfinite(points)) throw Refused("This is no place and no size.");
  return points;
}

}  // namespace mirelo::spreadsheet
