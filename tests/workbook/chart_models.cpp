#include "workbook/chart_models.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iomanip>
#include <sstream>

#include "host/excel/constants.h"
#include "spreadsheet/charts/chart_layout.h"
#include "spreadsheet/palette.h"

namespace mirelo::testing {

using namespace workbook;

namespace {

constexpr double kPrices[] = {28.35, 28.35, 28.4, 28.52, 28.47, 28.47, 28.3, 28.1, 28.22, 28.31};
constexpr std::int32_t kFirstRow = 3;

ChartLine OwnLine(std::int32_t weight, std::int32_t index, std::int32_t style = 1) {
  return {Look::Own, style, weight, PaletteColor(index)};
}
PointColor Own(std::int32_t index) { return {Look::Own, PaletteColor(index)}; }

// By the step from one price to the next: unchanged, rise, fall.
ChartPoint PointAfter(double step) {
  if (step > 0) return {OwnLine(host::excel::xlMedium, 10), Own(4), Own(10)};
  if (step < 0) return {OwnLine(host::excel::xlMedium, 53), Own(3), Own(53)};
  return {OwnLine(host::excel::xlMedium, 16), Own(15), Own(16)};
}

double NumberAt(const Sheet& sheet, std::int32_t row, std::int32_t column) {
  const CellValue* value = sheet.cells.Find(row, column);
  return value == nullptr ? 0 : *value->IfNumber();
}

void DressUp(Chart& chart, const std::string& title) {
  chart.legend = false;
  chart.category.on = chart.value.on = false;
  chart.value.gridlines = true;
  chart.value.gridline = OwnLine(host::excel::xlHairline, 16, host::excel::xlDot);
  chart.area = {Look::Own, host::excel::msoGradientVertical, 1, PaletteColor(47), PaletteColor(47)};
  chart.plot = {Look::Own, host::excel::msoGradientVertical, 1, PaletteColor(17), PaletteColor(24)};
  chart.plot_border = OwnLine(host::excel::xlThin, 56);
  chart.plot_place = ChartBox{0, 0, chart.place.width, chart.place.height};
  chart.title.emplace();
  chart.title->text = title;
  chart.title->bold = chart.title->scales = false;
  chart.title->size = 8;
  chart.title->color = PaletteColor(6);
  chart.title->left = 0;
  chart.title->border = OwnLine(host::excel::xlHairline, 56);
  chart.title->fill = Look::Own;
  chart.title->interior = PaletteColor(10);
  chart.title->pattern_color = PaletteColor(1);
  chart.title->top = chart.place.height;
  chart.title->top = TitleBox(chart).top;  // as far down as can be
}

void ColorPoints(Chart& chart, const Sheet& sheet) {
  ChartSeries& series = chart.series.front();
  series.line = {Look::Own, 1, host::excel::xlMedium, kAutomatic};
  series.marker = host::excel::xlMarkerStyleDiamond;
  series.marker_size = 6;
  const Area& cells = *series.values;
  for (std::int32_t row = cells.first_row; row <= cells.last_row; ++row) {
    const double before = row == cells.first_row ? NumberAt(sheet, row, cells.first_column)
                                                 : NumberAt(sheet, row - 1, cells.first_column);
    series.points.push_back(PointAfter(NumberAt(sheet, row, cells.first_column) - before));
  }
}

class Writer {
 public:
  explicit Writer(const Chart& chart) : chart_(chart) {}

  std::string Write() {
    text_ << std::setprecision(17);
    Line("name", chart_.name, "type", chart_.kind->type, "placement", chart_.placement, "legend",
         chart_.legend);
    Box("place", chart_.place);
    Fill("area", chart_.area);
    Fill("plot", chart_.plot);
    Edge("plot border", chart_.plot_border);
    if (chart_.plot_place) Box("plot place", *chart_.plot_place);
    if (chart_.title) Title(*chart_.title);
    Axis("category", chart_.category);
    Axis("value", chart_.value);
    for (const ChartSeries& series : chart_.series) Series(series);
    return text_.str();
  }

 private:
  template <class... Words>
  void Line(const Words&... words) {
    ((text_ << words << ' '), ...) << '\n';
  }
  static int Of(Look look) { return static_cast<int>(look); }

  void Box(const char* name, const ChartBox& box) { Line(name, box.left, box.top, box.width, box.height); }
  void Fill(const char* name, const ChartFill& fill) {
    Line(name, Of(fill.look), int{fill.gradient}, int{fill.variant}, fill.fore, fill.back);
  }
  void Edge(const char* name, const ChartLine& line) {
    Line(name, Of(line.look), line.style, line.weight, line.color);
  }
  void Title(const ChartTitle& title) {
    Line("title", std::quoted(title.text), title.bold, title.size, title.scales, title.color);
    Line("title at", title.left.value_or(-1), title.top.value_or(-1), "shadow", title.shadow);
    Edge("title border", title.border);
    Line("title ground", Of(title.fill), title.pattern, title.interior, title.pattern_color);
  }
  void Axis(const char* name, const ChartAxis& axis) {
    Line(name, axis.on, axis.gridlines, "font", axis.scales, axis.label_size, axis.label_bold,
         axis.label_color);
    Edge("gridline", axis.gridline);
  }
  void Series(const ChartSeries& series) {
    const auto sheet = workbook::SheetOf(series);
    const Area cells = series.values.value_or(Area{0, 0, 0, 0});
    Line("series", sheet == nullptr ? "no sheet" : sheet->name, cells.first_row, cells.first_column,
         cells.last_row, cells.last_column);
    Edge("line", series.line);
    Line("marker", series.marker, series.marker_size, "smooth", series.smooth, "shadow", series.shadow);
    Colors(series.background, series.foreground);
    std::size_t count = series.points.size();
    while (count > 0 && series.points[count - 1] == ChartPoint()) --count;
    for (std::size_t i = 0; i < count; ++i) {
      Line("point", i);
      Edge("line", series.points[i].line);
      Colors(series.points[i].background, series.points[i].foreground);
    }
  }
  void Colors(const PointColor& background, const PointColor& foreground) {
    Line("colours", Of(background.look), background.color, Of(foreground.look), foreground.color);
  }

  const Chart& chart_;
  std::ostringstream text_;
};

}  // namespace

std::shared_ptr<Book> BookWithHistory(std::int32_t rows) {
  auto book = Book::New();
  Sheet& sheet = *book->sheets.front();
  book->RenameSheet(sheet, "Quotes_Vertical(MSFT)");
  sheet.cells.Set(2, 4, CellValue::OfText("Last"));
  sheet.cells.Set(2, 5, CellValue::OfText("LastVolume"));
  for (std::int32_t i = 0; i < rows; ++i) {
    sheet.cells.Set(kFirstRow + i, 4, CellValue(kPrices[static_cast<std::size_t>(i) % std::size(kPrices)]));
    sheet.cells.Set(kFirstRow + i, 5, CellValue(100.0 * (i * 7 % 11 + 1)));
  }
  return book;
}

Chart& AddChart(const std::shared_ptr<Sheet>& sheet, std::int32_t column, std::int32_t last_row) {
  auto chart = std::make_shared<Chart>();
  chart->name = "Chart " + std::to_string(++sheet->charts.made);
  chart->series.emplace_back();
  chart->series.front().values = Area{kFirstRow, column, last_row, column};
  chart->series.front().sheet = sheet;
  sheet->charts.all.push_back(chart);
  return *chart;
}

void AddTickerCharts(const std::shared_ptr<Sheet>& sheet, std::int32_t rows) {
  constexpr double kHeight = 76;
  double top = 0;
  for (const std::int32_t column : {4, 5}) {
    Chart& chart = AddChart(sheet, column, kFirstRow + rows - 1);
    chart.kind = column == 4 ? &kLineKind : &kColumnKind;
    chart.place = {240, top, 200.25, kHeight - 0.25};  // whole pixels
    top += kHeight - 0.25;
    DressUp(chart, column == 4 ? "Last" : "LastVolume");
    ColorPoints(chart, *sheet);
  }
}

std::string Description(const Chart& chart) { return Writer(chart).Write(); }

}  // namespace mirelo::testing
