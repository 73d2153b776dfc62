#include "spreadsheet/charts/chart_border.h"

#include <algorithm>
#include <array>

#include "spreadsheet/color_index.h"
#include "spreadsheet/refusals.h"

namespace mirelo::spreadsheet {

using namespace host::excel;

namespace {

constexpr std::array<std::int32_t, 7> kLineStyles{xlContinuous, xlDashDot, xlDashDotDot, xlSlantDashDot,
                                                  xlDash,       xlDot,     xlDouble};
constexpr std::array<std::int32_t, 4> kWeights{xlHairline, xlThin, xlThick, xlMedium};

template <class List>
bool Holds(const List& list, std::int32_t number) {
  return std::find(list.begin(), list.end(), number) != list.end();
}

// A line that comes in anew is a thin continuous one of automatic colour.
void Draw(ChartLine& line) {
  if (line.look != Look::Own) line = {.look = Look::Own};
}

}  // namespace

ChartLineAccess AccessTo(const ChartPart<ChartLine>& line) {
  return {[line] { return line.Get(); },
          [line](const std::function<void(ChartLine&)>& change) { line.Change(change); }};
}

Variant ChartBorder::LineStyle() {
  const ChartLine line = line_.read();
  if (line.look == Look::Automatic) return xlLineStyleAutomatic;
  return line.look == Look::None ? std::int32_t{xlLineStyleNone} : line.style;
}

void ChartBorder::LineStyle(std::int32_t style) {
  line_.change([&](ChartLine& line) {
    if (style == xlLineStyleAutomatic) {
      line = {};
    } else if (style == xlLineStyleNone) {
      line = {.look = Look::None};
    } else {
      if (!Holds(kLineStyles, style)) throw Refusals::NotALineStyle();
      Draw(line);
      line.style = style;
    }
  });
}

Variant ChartBorder::Weight() { return line_.read().weight; }

void ChartBorder::Weight(std::int32_t weight) {
  if (!Holds(kWeights, weight)) throw Refusals::NotALineWeight();
  line_.change([&](ChartLine& line) {
    Draw(line);
    line.weight = weight;
  });
}

Variant ChartBorder::ColorIndex() {
  const ChartLine line = line_.read();
  return line.look == Look::None ? std::int32_t{xlColorIndexNone} : IndexOfColor(line.color);
}

void ChartBorder::ColorIndex(std::int32_t index) {
  if (index == xlColorIndexNone) return LineStyle(xlLineStyleNone);
  const Color color = ColorOfIndex(index);
  line_.change([&](ChartLine& line) {
    if (line.look == Look::Automatic && color == kAutomatic) return;
    Draw(line);
    line.color = color;
  });
}

}  // namespace mirelo::spreadsheet
