// Update_Charts on the vertical tables of a hundred tickers, each with its two charts: what it costs as
// charts show more points, each of which is painted on its own.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "automation/variant.h"
#include "core/cMirelo.h"
#include "host/excel/application.h"
#include "host/excel/chart.h"
#include "host/excel/chart_parts.h"
#include "host/excel/charts.h"
#include "host/excel/range.h"
#include "host/excel/series.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "host/host.h"
#include "support/manual_clock.h"
#include "support/memory_registry.h"
#include "support/recording_system.h"
#include "support/scripted_desktop.h"
#include "support/test_host.h"

namespace mirelo {
namespace {

using host::excel::Worksheet;

constexpr std::int32_t kTables = 100;
constexpr std::int32_t kRows = 1300;  // more than any chart shows

class Desk {
 public:
  Desk() {
    facade.m_ObjExcelApplication(excel_);
    for (std::int32_t i = 1; i <= kTables; ++i) tables.push_back(NewTable(i));
  }

 private:
  std::shared_ptr<Worksheet> NewTable(std::int32_t number) {
    const auto table = excel_->ActiveWorkbook()->Worksheets()->Add();
    table->Name("Quotes_Vertical(TCK" + std::to_string(number) + ")");
    VariantArray cells(1, kRows + 1, 1, 3);
    cells(1, 1) = "Time";
    cells(1, 2) = "Last";
    cells(1, 3) = "LastVolume";
    for (std::int32_t row = 2; row <= kRows + 1; ++row) {
      cells(row, 1) = row;
      cells(row, 2) = 100 + (row * number) % 17;
      cells(row, 3) = (row * number) % 23;
    }
    table->Range("A2")->Resize(kRows + 1, 3)->Value(cells);
    AddChart(*table, "B3:B4", "Last", host::excel::xlLineMarkers);
    AddChart(*table, "C3:C4", "LastVolume", host::excel::xlColumnClustered);
    return table;
  }

  void AddChart(Worksheet& table, const char* source, const char* title, host::excel::XlChartType type) {
    auto chart = excel_->ActiveWorkbook()->Charts()->Add();
    chart->ChartType(type);
    chart->SetSourceData(*table.Range(source), host::excel::xlColumns);
    chart = chart->Location(host::excel::xlLocationAsObject, table.Name());
    chart->HasTitle(true);
    chart->ChartTitle()->Text(title);
  }

  testing::ManualClock clock_;
  testing::MemoryRegistry registry_;
  testing::RecordingSystem system_;
  testing::ScriptedDesktop desktop_;
  testing::TestHost host_;
  host::HostScope installed_{host_.Use(clock_).Use(registry_).Use(system_).Use(desktop_)};
  workbook::Spreadsheet spreadsheet_ = workbook::Spreadsheet::New();
  std::shared_ptr<host::excel::Application> excel_ = spreadsheet_.Application();

 public:
  cMirelo facade;
  std::vector<std::shared_ptr<Worksheet>> tables;
};

void UpdateCharts(benchmark::State& state) {
  const auto points = static_cast<std::int32_t>(state.range(0));
  Desk desk;
  VariantArray changes(1, 2, 1, 2);
  changes(1, 1) = changes(2, 1) = "8:36:13 AM";
  changes(1, 2) = 0.5;
  changes(2, 2) = -0.5;
  const Variant rows = changes;
  for (auto _ : state) {
    for (const auto& table : desk.tables) desk.facade.Update_Charts(table, rows, points, "Blue", 1, 1);
  }
  state.SetItemsProcessed(state.iterations() * kTables * 2 * points);

  const auto shape = desk.tables.back()->Shapes()->Item(1);
  const Variant shown = shape->Chart()->SeriesCollection(1)->Values();
  if (shown.AsArray().UBound() != points) state.SkipWithError("the chart does not show its points");
}

BENCHMARK(UpdateCharts)->Name("charts/Update_Charts")->Arg(20)->Arg(1200);

}  // namespace
}  // namespace mirelo

BENCHMARK_MAIN();
