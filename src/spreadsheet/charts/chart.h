#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "spreadsheet/area.h"
#include "spreadsheet/charts/chart_kind.h"
#include "spreadsheet/style.h"

namespace mirelo::spreadsheet {

// A worksheet, as the charts know it that plot its cells.
class CellSource {
 public:
  virtual ~CellSource() = default;
  // Calls visit(row, column, number) for the cells of the area that hold numbers.
  virtual void ForEachNumber(
      const Area& area,
      const std::function<void(std::int32_t row, std::int32_t column, double number)>& visit) const = 0;
};

// How a line or a fill looks: as the chart chooses, not at all, or as somebody set it.
enum class Look : std::uint8_t {
  Automatic,  // the chart's own choice
  None,
  Own,  // as told
};

struct ChartLine {
  Look look = Look::Automatic;
  std::int32_t style = 1;   // host::excel::XlLineStyle of an own line
  std::int32_t weight = 2;  // host::excel::XlBorderWeight
  Color color = kAutomatic;
  friend bool operator==(const ChartLine&, const ChartLine&) = default;
};

struct ChartFill {
  Look look = Look::Automatic;
  // 0 is one colour, the fore colour; otherwise a gradient, host::excel::MsoGradientStyle.
  std::uint8_t gradient = 0;
  std::uint8_t variant = 1;  // of a gradient, 1 to 4
  Color fore = kAutomatic;
  Color back = kAutomatic;
  friend bool operator==(const ChartFill&, const ChartFill&) = default;
};

// A place or a size in points.
struct ChartBox {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;
  friend bool operator==(const ChartBox&, const ChartBox&) = default;
};

struct ChartTitle {
  std::string text = "Chart Title";
  bool bold = true;
  double size = 12;  // points
  bool scales = true;
  Color color = kAutomatic;  // of the font
  // Top left corner, as it was set; the title's own place when nobody set one.
  std::optional<double> left;
  std::optional<double> top;
  bool shadow = false;
  ChartLine border;
  Look fill = Look::Automatic;
  std::int32_t pattern = 1;  // host::excel::XlPattern of an own fill
  Color interior = kAutomatic;
  Color pattern_color = kAutomatic;
  friend bool operator==(const ChartTitle&, const ChartTitle&) = default;
};

struct ChartAxis {
  bool on = true;
  bool gridlines = false;
  ChartLine gridline;
  bool scales = true;      // its labels' font, with the chart
  double label_size = 10;  // points
  bool label_bold = false;
  Color label_color = kAutomatic;
  friend bool operator==(const ChartAxis&, const ChartAxis&) = default;
};

// A colour of a point or a series as somebody set it; Look::Automatic where nobody did.
struct PointColor {
  Look look = Look::Automatic;
  Color color = kAutomatic;  // of an own look
  friend bool operator==(const PointColor&, const PointColor&) = default;
};

// What was set on one point. What is automatic, the point has from its series.
struct ChartPoint {
  ChartLine line;
  PointColor background;  // of its marker; of a column the fill
  PointColor foreground;
  friend bool operator==(const ChartPoint&, const ChartPoint&) = default;
};

struct ChartSeries {
  // The cells that are plotted, one column or one row. Nothing when they were deleted.
  std::optional<Area> values;
  std::weak_ptr<CellSource> sheet;  // on which they lie
  ChartLine line;
  std::int32_t marker = -4105;  // host::excel::XlMarkerStyle
  std::int32_t marker_size = 5;
  PointColor background;
  PointColor foreground;
  bool smooth = false;
  bool shadow = false;
  std::vector<ChartPoint> points;  // by number from 0; points behind the last have nothing for themselves
};

struct Chart {
  static constexpr double kStandardWidth = 360;  // points
  static constexpr double kStandardHeight = 216;

  std::string name;  // of its shape, "Chart 1"; of a chart sheet the sheet's
  const ChartKind* kind = &kColumnKind;
  ChartBox place{0, 0, kStandardWidth, kStandardHeight};  // on its sheet: whole pixels of 0.75 points
  std::int32_t placement = 1;  // XlPlacement: moves and grows with the cells beneath, 2 moves, 3 does neither
  ChartFill area;
  ChartFill plot;
  ChartLine plot_border;
  // Where the plot stands in the chart, as far as it was set; it never reaches over the chart's edge.
  std::optional<ChartBox> plot_place;
  std::optional<ChartTitle> title;
  ChartAxis category;
  ChartAxis value;
  bool legend = true;
  std::vector<ChartSeries> series;
};

// The charts that lie on a sheet, from the bottom of the pile to its top. Clients hold a chart whatever
// becomes of it.
struct SheetCharts {
  std::vector<std::shared_ptr<Chart>> all;
  std::int32_t made = 0;  // charts that the sheet ever had, for their names
};

}  // namespace mirelo::spreadsheet
