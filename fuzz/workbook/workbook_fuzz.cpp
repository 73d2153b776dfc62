// Reads hostile .xlsx files: whatever the bytes are, they are read or refused with an error of the
// spreadsheet, within the limits. A workbook that was read shows all its cells, and what is saved of it reads
// back the same.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <vector>

#include "adapters/workbook/model/sheet_formats.h"
#include "adapters/workbook/model/used_area.h"
#include "adapters/workbook/xlsx/carrying_writer.h"
#include "adapters/workbook/xlsx/origin.h"
#include "adapters/workbook/xlsx/saved_check.h"
#include "adapters/workbook/xlsx/stale_results.h"
#include "adapters/workbook/xlsx/workbook_reader.h"
#include "adapters/workbook/xlsx/workbook_writer.h"
#include "spreadsheet/display/displayed_text.h"

namespace mirelo::workbook {
namespace {

constexpr std::size_t kSavedOfAll = 32;  // one in so many, as saving takes a hundred times as long as reading
constexpr std::int64_t kMostBlanks = 2000;

LoadLimits SmallLimits() {
  LoadLimits limits;
  limits.part_bytes = 256 << 10;
  limits.total_bytes = 1 << 20;
  limits.parts = 100;
  limits.sheets = 20;
  limits.cells = 20'000;
  limits.text_bytes = 1 << 20;
  limits.styles = 500;
  limits.charts = 20;
  limits.chart_series = 50;
  limits.chart_points = 20'000;
  return limits;
}

void Require(bool holds) {
  if (!holds) std::abort();
}

void ShowAll(const Book& book) {
  std::size_t shown = 0;
  for (const auto& sheet : book.sheets) {
    sheet->cells.ForEach(Area::Sheet(), [&](std::int32_t row, std::int32_t column, const CellValue& value) {
      shown += DisplayedText(value, book.styles.Get(sheet->styles.At(row, column)).number_format).size();
      Require(sheet->cells.IsFilled(sheet->cells.EndDown(row, column), column) ||
              sheet->cells.EndDown(row, column) == kRows);
    });
  }
  Require(shown < (std::size_t{1} << 32));
}

bool IsQuickToSave(const Book& book) {
  std::int64_t work = 0;
  for (const auto& sheet : book.sheets) {
    const SheetFormats formats(sheet->styles);
    work += formats.CountExceptions() + static_cast<std::int64_t>(sheet->cells.Count());
    for (const auto& chart : sheet->charts.all) {
      for (const ChartSeries& series : chart->series) work += static_cast<std::int64_t>(series.points.size());
    }
    for (const auto& rows : formats.rows()) work += rows.last - rows.first + 1;
  }
  return work < kMostBlanks;
}

// Takes rows out of the midst of a sheet; what is used, laid or noted below moves up, and nothing else
// changes.
void DeleteRows(Sheet& sheet) {
  const Area used = UsedArea(sheet);
  const Area gone{used.last_row / 2 + 1, 1, used.last_row / 2 + 2, kColumns};
  if (!gone.IsOnSheet()) return;
  std::size_t cells_left = sheet.cells.Count();
  sheet.cells.ForEach(gone, [&](std::int32_t, std::int32_t, const CellValue&) { --cells_left; });
  std::size_t comments_left = sheet.comments.all().size();
  sheet.comments.ForEach(gone, [&](std::int32_t, std::int32_t, const Comment&) { --comments_left; });
  std::size_t conditions_left = 0;
  for (const auto& condition : sheet.conditions.all()) {
    if (!Without(condition->areas, gone).empty()) ++conditions_left;
  }
  sheet.Delete(gone);
  Require(sheet.cells.Count() == cells_left);
  Require(sheet.comments.all().size() == comments_left);
  Require(sheet.conditions.all().size() == conditions_left);
  Require(UsedArea(sheet).last_row <= used.last_row);
}

void SaveAndReadBack(const Book& book) {
  static const std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("fuzz-" + std::to_string(getpid()) + ".xlsx");
  WriteWorkbook(book, file);
  CheckSaved(book, file);
  std::filesystem::remove(file);
}

// Adds a sheet, and saves it beside those of the file as they stand there. A file may turn out to be damaged
// then; whatever was written is what was to be written.
void SaveCarrying(std::span<const char> bytes, const LoadLimits& limits) {
  LoadedBook loaded = ReadWorkbook(bytes, limits);
  if (!loaded.can_be_carried || !IsQuickToSave(*loaded.book)) return;
  const Origin origin({bytes.begin(), bytes.end()}, limits, loaded);
  const auto sheet = loaded.book->AddSheet();
  sheet->cells.Set(2, 2, CellValue(1.5));
  if (bytes.size() % 2 == 0) loaded.book->sheets.front()->cells.Set(1, 1, CellValue(true));
  const auto kept = origin.KeptSheets(*loaded.book);
  if (!kept) return;
  static const std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("fuzz-kept-" + std::to_string(getpid()) + ".xlsx");
  std::ofstream(file).flush();
  StaleResults stale;
  try {
    stale = FindStaleResults(*loaded.book, origin, *kept);
    WriteCarrying(*loaded.book, origin, *kept, stale, WriteNewSheets(*loaded.book, *kept, file), file);
  } catch (const RuntimeError& error) {
    Require(error.Number() == host::excel::kApplicationError);
    return;
  }
  Require(ProblemOfSaved(*loaded.book, *kept, stale, file).empty());
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace mirelo::workbook

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  // Whole workbooks are larger than the fuzzer's usual inputs.
  static std::string max_length = "-max_len=65536";
  static std::vector<char*> arguments(*argv, *argv + *argc);
  arguments.insert(arguments.begin() + 1, max_length.data());
  arguments.push_back(nullptr);
  *argv = arguments.data();
  ++*argc;
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace mirelo::workbook;
  static const LoadLimits limits = SmallLimits();
  LoadedBook loaded;
  try {
    loaded = ReadWorkbook({reinterpret_cast<const char*>(data), size}, limits);
  } catch (const mirelo::RuntimeError& error) {
    Require(error.Number() == mirelo::host::excel::kApplicationError);
    Require(error.Description().find(": ") != std::string::npos);  // the part, and what is wrong with it
    return 0;
  }
  ShowAll(*loaded.book);
  if (size % kSavedOfAll < 2 && !loaded.losses.empty())
    SaveCarrying({reinterpret_cast<const char*>(data), size}, limits);
  for (const auto& sheet : loaded.book->sheets) DeleteRows(*sheet);
  if (size % kSavedOfAll == 0 && IsQuickToSave(*loaded.book)) SaveAndReadBack(*loaded.book);
  return 0;
}
