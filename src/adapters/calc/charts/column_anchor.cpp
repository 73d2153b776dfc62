#include "adapters/calc/charts/column_anchor.h"

#include <algorithm>
#include <com/sun/star/awt/Point.hpp>

#include "adapters/calc/charts/office_chart.h"
#include "spreadsheet/area.h"

namespace mirelo::calc {

namespace {

constexpr sal_Int32 kHalfAPixel = 14;

sal_Int32 BeginningOf(const Reference<css::beans::XPropertySet>& column) {
  return Properties(column).Get("Position", css::awt::Point()).X;
}

// All of it, which goes on standing for the column whatever becomes of its rows.
Reference<css::beans::XPropertySet> ColumnOf(DocumentSheet& sheet, sal_Int32 column) {
  return As<css::beans::XPropertySet>(
      sheet.Get()->getCellRangeByPosition(column, 0, column, spreadsheet::kRows - 1));
}

// The number, from 0, of the last column that begins there or in front of it.
sal_Int32 ColumnAt(DocumentSheet& sheet, sal_Int32 length) {
  const auto begins_behind = [&](sal_Int32 column) { return BeginningOf(ColumnOf(sheet, column)) > length; };
  sal_Int32 behind = 1;
  while (behind < spreadsheet::kColumns && !begins_behind(behind)) behind *= 2;
  behind = std::min(behind, sal_Int32{spreadsheet::kColumns});
  for (sal_Int32 last = behind / 2; last + 1 < behind;) {
    const sal_Int32 middle = last + (behind - last) / 2;
    (begins_behind(middle) ? behind : last) = middle;
  }
  return behind - 1;
}

}  // namespace

// Clients put charts on whole pixels. One that was put where a column begins is to stay there.
ColumnAnchor::Edge::Edge(DocumentSheet& sheet, sal_Int32 length)
    : column(ColumnOf(sheet, ColumnAt(sheet, length + kHalfAPixel))), at(BeginningOf(column)) {}

std::optional<ColumnAnchor> ColumnAnchor::Of(DocumentSheet& sheet, const spreadsheet::ChartBox& place) {
  const bool goes_to_the_left = BeginningOf(ColumnOf(sheet, 1)) < 0;
  if (goes_to_the_left || place.left < 0) return std::nullopt;
  return ColumnAnchor(sheet, place);
}

ColumnAnchor::ColumnAnchor(DocumentSheet& sheet, const spreadsheet::ChartBox& place)
    : place_(place),
      left_(sheet, LengthOf(place.left)),
      right_(sheet, LengthOf(place.left + place.width)),
      behind_left_(std::max(LengthOf(place.left) - left_.at, sal_Int32{0})) {
  if (behind_left_ <= kHalfAPixel) behind_left_ = 0;
}

const spreadsheet::ChartBox& ColumnAnchor::Follow() {
  const sal_Int32 left = BeginningOf(left_.column);
  const sal_Int32 right = BeginningOf(right_.column);
  const sal_Int32 wider = (right - left) - (right_.at - left_.at);
  if (left != left_.at) place_.left = PointsOf(left + behind_left_);
  if (wider != 0) place_.width = std::max(PointsOf(LengthOf(place_.width) + wider), 1.0);
  left_.at = left;
  right_.at = right;
  return place_;
}

}  // namespace mirelo::calc
