// Painting a chart point by point, as after each new row of a table: what it costs as the points grow in
// number.

#include <benchmark/benchmark.h>

#include <cstdint>

#include "adapters/workbook/spreadsheet.h"
#include "host/excel/border.h"
#include "host/excel/chart.h"
#include "host/excel/charts.h"
#include "host/excel/range.h"
#include "host/excel/series.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo {
namespace {

using namespace host::excel;

void PaintPoints(benchmark::State& state) {
  const auto points = static_cast<std::int32_t>(state.range(0));
  const auto application = workbook::Spreadsheet::New().Application();
  const auto source = application->Range("D3")->Resize(points, 1);
  source->Value(12.5);
  const auto empty = application->Charts()->Add();
  empty->SetSourceData(*source, xlColumns);
  const auto chart = empty->Location(xlLocationAsObject, "Sheet1");
  for (auto _ : state) {
    const auto series = chart->SeriesCollection(1);
    benchmark::DoNotOptimize(series->Values());
    for (std::int32_t i = 1; i <= points; ++i) {
      const auto point = series->Points(i);
      point->Border()->ColorIndex(10);
      point->MarkerBackgroundColorIndex(i % 2 == 0 ? 4 : 3);
      point->MarkerForegroundColorIndex(53);
    }
  }
  state.SetItemsProcessed(state.iterations() * points);
}

BENCHMARK(PaintPoints)->Name("workbook/paint_points")->Arg(20)->Arg(300)->Arg(1'200)->Arg(4'800);

}  // namespace
}  // namespace mirelo
