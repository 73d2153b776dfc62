#include "adapters/workbook/xlsx/workbook_writer.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "adapters/workbook/load_limits.h"
#include "adapters/workbook/model/sheet_formats.h"
#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/chart_parts.h"
#include "adapters/workbook/xlsx/format_writer.h"
#include "adapters/workbook/xlsx/sheet_writer.h"
#include "adapters/workbook/xlsx/told_styles.h"
#include "adapters/workbook/xlsx/writer_error.h"
#include "adapters/workbook/xlsx/writer_process.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

namespace {

using Sheets = std::vector<std::shared_ptr<Sheet>>;
using ChartSheets = std::vector<std::shared_ptr<Chart>>;

constexpr std::size_t kMostHelperFiles = 256;
constexpr std::int64_t kCellsAMinute = 50'000;

struct FreeWorkbook {
  void operator()(lxw_workbook* workbook) const { lxw_workbook_free(workbook); }
};
using Workbook = std::unique_ptr<lxw_workbook, FreeWorkbook>;

// Whether the writer can pass rows on to its helper files as they come, so that a workbook costs no memory a
// second time. It needs a file for each sheet then, and places the boxes of comments by rows that it still
// has.
bool CanPassRowsOn(const Sheets& sheets) {
  const auto needs_rows = [](const auto& sheet) {
    return !sheet->comments.all().empty() && sheet->heights != RunMap<RowHeight>(kRows, {});
  };
  return sheets.size() <= kMostHelperFiles && std::none_of(sheets.begin(), sheets.end(), needs_rows);
}

Workbook NewWorkbook(const Sheets& sheets, const std::filesystem::path& file) {
  std::string folder = file.parent_path().string();
  if (folder.empty()) folder = '.';
  lxw_workbook_options options{};
  options.tmpdir = folder.data();
  options.constant_memory = CanPassRowsOn(sheets) ? LXW_TRUE : LXW_FALSE;
  Workbook workbook(workbook_new_opt(file.c_str(), &options));
  if (workbook == nullptr) throw Errors::OutOfMemory();
  return workbook;
}

// Of each sheet.
std::vector<ToldStyles> StylesToTellOf(const Sheets& sheets, const StyleTable& styles) {
  std::vector<ToldStyles> told;
  told.reserve(sheets.size());
  for (const auto& sheet : sheets) told.push_back(StylesToTell(*sheet, styles));
  return told;
}

// So that what is saved can be loaded again. The result is how many cells are written for their format.
std::int64_t CheckFormattedCells(const std::vector<ToldStyles>& styles) {
  std::int64_t count = 0;
  for (const ToldStyles& told : styles) count += SheetFormats(told.styles).CountExceptions();
  if (count > static_cast<std::int64_t>(LoadLimits().blank_cells))
    throw Refused("Too many cells of the workbook are formatted to be saved.");
  return count;
}

// A hundred times what the writer takes, and more: only one that stands still is ended.
std::chrono::minutes PatienceFor(const Sheets& sheets, std::int64_t formatted) {
  std::int64_t cells = formatted;
  for (const auto& sheet : sheets) cells += static_cast<std::int64_t>(sheet->cells.Count());
  return std::chrono::minutes(1 + cells / kCellsAMinute);
}

void CheckCharts(const Sheets& sheets, const ChartSheets& chart_sheets) {
  const LoadLimits limits;
  std::size_t charts = 0;
  std::size_t series = 0;
  std::size_t points = 0;
  const auto count = [&](const Chart& chart) {
    ++charts;
    series += chart.series.size();
    for (const ChartSeries& one : chart.series) points += one.points.size();
  };
  for (const auto& sheet : sheets) {
    for (const auto& chart : sheet->charts.all) count(*chart);
  }
  for (const auto& chart : chart_sheets) count(*chart);
  if (charts > limits.charts || series > limits.chart_series || points > limits.chart_points)
    throw Refused("The workbook has too many charts to be saved.");
}

void WriteProperties(lxw_workbook* workbook, DocumentProperties properties) {
  lxw_doc_properties fields{};
  fields.title = properties.title.data();
  fields.subject = properties.subject.data();
  fields.author = properties.author.data();
  fields.keywords = properties.keywords.data();
  fields.comments = properties.comments.data();
  fields.category = properties.category.data();
  fields.status = properties.status.data();
  fields.manager = properties.manager.data();
  fields.company = properties.company.data();
  CheckWriter(workbook_set_properties(workbook, &fields));
}

void WriteFile(const Book& book, const Sheets& sheets, const std::vector<ToldStyles>& styles,
               bool has_chart_sheets, const std::filesystem::path& file) {
  Workbook workbook = NewWorkbook(sheets, file);
  FormatWriter formats(workbook.get(), book.styles);
  for (std::size_t i = 0; i < sheets.size(); ++i) {
    const auto& sheet = sheets[i];
    lxw_worksheet* worksheet = workbook_add_worksheet(workbook.get(), sheet->name.c_str());
    if (worksheet == nullptr) throw Refused("The sheet \"" + sheet->name + "\" cannot be written.");
    if (sheet == book.FrontSheet()) worksheet_activate(worksheet);
    if (sheet->hidden) worksheet_hide(worksheet);
    WriteSheet(*sheet, styles[i], worksheet, formats);
    ReserveCharts(*sheet, workbook.get(), worksheet);
  }
  if (has_chart_sheets) ReserveChartSheets(book, workbook.get());
  WriteProperties(workbook.get(), book.properties);
  CheckWriter(workbook_close(workbook.release()));
}

void Write(const Book& book, const Sheets& sheets, const ChartSheets& chart_sheets,
           const std::filesystem::path& file) {
  const std::vector<ToldStyles> styles = StylesToTellOf(sheets, book.styles);
  const std::int64_t formatted = CheckFormattedCells(styles);
  CheckCharts(sheets, chart_sheets);
  InWriterProcess([&] { WriteFile(book, sheets, styles, !chart_sheets.empty(), file); },
                  PatienceFor(sheets, formatted));
  WriteCharts(book, sheets, chart_sheets, file);
}

}  // namespace

void WriteSheets(const Book& book, const Sheets& sheets, const std::filesystem::path& file) {
  Write(book, sheets, {}, file);
}

void WriteWorkbook(const Book& book, const std::filesystem::path& file) {
  Write(book, book.sheets, book.chart_sheets, file);
}

}  // namespace mirelo::workbook
