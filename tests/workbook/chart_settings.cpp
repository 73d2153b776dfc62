#include "workbook/chart_settings.h"

namespace mirelo::testing {

using namespace spreadsheet;

const std::vector<ChartSetting>& ChartSettings() {
  static const auto title = [](const std::function<void(ChartTitle&)>& make) {
    return [make](Chart& chart) { make(chart.title.emplace()); };
  };
  static const auto series = [](const std::function<void(ChartSeries&)>& make) {
    return [make](Chart& chart) { make(chart.series.front()); };
  };
  static const ChartLine line{Look::Own, 1, 2, 0x123456};
  static const std::vector<ChartSetting> settings{
      {"nothing", [](Chart&) {}},
      {"name", [](Chart& c) { c.name = "Prices & \"more\" <1>\n\x01"; }},
      {"place",
       [](Chart& c) {
         c.place = {123.75, 456, 200.25, 75.75};
       }},
      {"place off the pixels",
       [](Chart& c) {
         c.place = {0.1, 0.2, 200.3, 76};
       }},
      {"no size",
       [](Chart& c) {
         c.place = {10.5, 10.5, 0, 0};
       }},
      {"moves", [](Chart& c) { c.placement = 2; }},
      {"stays", [](Chart& c) { c.placement = 3; }},
      {"no legend", [](Chart& c) { c.legend = false; }},
      {"area without fill", [](Chart& c) { c.area.look = Look::None; }},
      {"area of one colour",
       [](Chart& c) {
         c.area = {Look::Own, 0, 1, 0xFF00FF, kAutomatic};
       }},
      {"area of an automatic colour",
       [](Chart& c) {
         c.area = {Look::Own, 0, 1, kAutomatic, kAutomatic};
       }},
      {"horizontal gradient",
       [](Chart& c) {
         c.area = {Look::Own, 1, 1, 0x112233, 0x445566};
       }},
      {"vertical gradient",
       [](Chart& c) {
         c.area = {Look::Own, 2, 1, 0x112233, 0x445566};
       }},
      {"diagonal gradient",
       [](Chart& c) {
         c.plot = {Look::Own, 3, 2, 0x112233, 0x445566};
       }},
      {"other diagonal gradient",
       [](Chart& c) {
         c.plot = {Look::Own, 4, 3, 0x112233, 0x445566};
       }},
      {"gradient the other way",
       [](Chart& c) {
         c.plot = {Look::Own, 2, 2, 0x112233, 0x445566};
       }},
      {"gradient with the fore colour inside",
       [](Chart& c) {
         c.plot = {Look::Own, 2, 3, 1, 2};
       }},
      {"gradient with the back colour inside",
       [](Chart& c) {
         c.plot = {Look::Own, 2, 4, 1, 2};
       }},
      {"gradient of one colour",
       [](Chart& c) {
         c.area = {Look::Own, 2, 1, 0x666699, 0x666699};
       }},
      {"gradient of no colours",
       [](Chart& c) {
         c.plot = {Look::Own, 1, 2, kAutomatic, kAutomatic};
       }},
      {"plot without fill", [](Chart& c) { c.plot.look = Look::None; }},
      {"plot border", [](Chart& c) { c.plot_border = line; }},
      {"no plot border", [](Chart& c) { c.plot_border.look = Look::None; }},
      {"plot place",
       [](Chart& c) {
         c.plot_place = ChartBox{0, 1.5, 123.456, 70};
       }},
      {"title", title([](ChartTitle&) {})},
      {"title text", title([](ChartTitle& t) { t.text = " <Last> & \t\"more\" \xE2\x82\xAC _x0041_"; })},
      {"title of lines", title([](ChartTitle& t) { t.text = "one\n\nthree\r\n"; })},
      {"empty title", title([](ChartTitle& t) { t.text = ""; })},
      {"title font", title([](ChartTitle& t) {
         t.bold = false;
         t.size = 8.5;
         t.color = 0xFFFF00;
       })},
      {"title that does not scale", title([](ChartTitle& t) { t.scales = false; })},
      {"title moved", title([](ChartTitle& t) {
         t.left = 33.3;
         t.top = 62.25;
       })},
      {"title moved down", title([](ChartTitle& t) { t.top = 0; })},
      {"title moved right", title([](ChartTitle& t) { t.left = 1.0 / 128; })},
      {"title shadow", title([](ChartTitle& t) { t.shadow = true; })},
      {"title border", title([](ChartTitle& t) {
         t.border = {Look::Own, 1, 1, 0x333333};
       })},
      {"title ground", title([](ChartTitle& t) {
         t.fill = Look::Own;
         t.interior = 0xC0C0C0;
         t.pattern_color = 0;
       })},
      {"title ground of no colour", title([](ChartTitle& t) { t.fill = Look::Own; })},
      {"title without ground", title([](ChartTitle& t) {
         t.fill = Look::None;
         t.pattern = -4142;
       })},
      {"no axes", [](Chart& c) { c.category.on = c.value.on = false; }},
      {"gridlines",
       [](Chart& c) {
         c.value.gridlines = c.category.gridlines = true;
         c.value.gridline = {Look::Own, -4118, 1, 0x808080};
       }},
      {"fonts of axes",
       [](Chart& c) {
         c.value.scales = false;
         c.value.label_size = 8;
         c.category.label_bold = true;
         c.category.label_color = 0xABCDEF;
       }},
      {"no series", [](Chart& c) { c.series.clear(); }},
      {"several series",
       [](Chart& c) {
         c.series.resize(3, c.series.front());
         c.series[1].values = Area{2, 1, 2, 200};
         c.series[2].values = Area{1, 5, kRows, 5};
       }},
      {"series without cells", series([](ChartSeries& s) {
         s.values.reset();
         s.sheet.reset();
       })},
      {"series of one cell", series([](ChartSeries& s) { s.values = Area::Cell(9, 9); })},
      {"series line", series([](ChartSeries& s) { s.line = line; })},
      {"series line of no colour", series([](ChartSeries& s) {
         s.line = {Look::Own, 1, -4138, kAutomatic};
       })},
      {"no series line", series([](ChartSeries& s) { s.line.look = Look::None; })},
      {"markers", series([](ChartSeries& s) {
         s.marker = 2;
         s.marker_size = 6;
         s.background = {Look::Own, 0x00FF00};
         s.foreground = {Look::Own, 0x008000};
       })},
      {"markers of no colour", series([](ChartSeries& s) {
         s.background = {Look::Own, kAutomatic};
         s.foreground = {Look::None, kAutomatic};
       })},
      {"hollow markers", series([](ChartSeries& s) { s.background.look = Look::None; })},
      {"no markers", series([](ChartSeries& s) { s.marker = -4142; })},
      {"smooth", series([](ChartSeries& s) { s.smooth = true; })},
      {"series shadow", series([](ChartSeries& s) { s.shadow = true; })},
      {"points", series([](ChartSeries& s) {
         s.points.resize(9);
         s.points[2] = {line, {Look::Own, 0xFF0000}, {Look::Own, 0x993300}};
         s.points[3].line.look = Look::None;
         s.points[4].background = {Look::None, kAutomatic};
         s.points[5].foreground = {Look::Own, kAutomatic};
       })},
  };
  return settings;
}

}  // namespace mirelo::testing
