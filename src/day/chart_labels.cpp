#include "day/chart_labels.h"

#include <array>
#include <cstdint>
#include <string>

#include "automation/text.h"
#include "host/excel/application.h"
#include "host/excel/chart.h"
#include "host/excel/chart_parts.h"
#include "host/excel/constants.h"
#include "host/excel/range.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "worksheet/cell_text.h"
#include "worksheet/vertical_sheets.h"

namespace mirelo::day {

namespace excel = host::excel;

namespace {

constexpr std::array<const char*, 2> kTitles{"Last", "LastVolume"};

bool IsOfTickers(excel::Chart& chart) {
  if (!chart.HasTitle()) return false;
  const std::string title = chart.ChartTitle()->Text();
  return EqualText(title, kTitles[0]) || EqualText(title, kTitles[1]);
}

void Uncover(excel::Chart& chart) {
  const auto plot = chart.PlotArea();
  const double top = plot->Top();
  const double label = chart.ChartTitle()->Top();
  if (top < label && label < top + plot->Height()) plot->Height(label - top);
}

}  // namespace

void UncoverFirstBars(excel::Application& application) {
  const auto sheets = application.Worksheets();
  for (std::int32_t i = 1; i <= sheets->Count(); ++i) {
    const auto sheet = sheets->Item(i);
    if (!EqualText(TextOf(*sheet->Range(kSetUpCell)), kSetUpMark)) continue;
    const auto shapes = sheet->Shapes();
    for (std::int32_t s = 1; s <= shapes->Count(); ++s) {
      const auto shape = shapes->Item(s);
      if (shape->Type() == excel::msoChart && IsOfTickers(*shape->Chart())) Uncover(*shape->Chart());
    }
  }
}

}  // namespace mirelo::day
