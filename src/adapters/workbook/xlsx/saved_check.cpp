#include "adapters/workbook/xlsx/saved_check.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "adapters/workbook/atomic_file.h"
#include "adapters/workbook/file_errors.h"
#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/sheet_changes.h"
#include "adapters/workbook/xlsx/workbook_reader.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {

namespace {

constexpr double kPrecision = 1e-15;  // of the 16 digits that files hold of a number

bool IsSame(const CellValue& a, const CellValue& b) {
  const double* number = a.IfNumber();
  const double* other = b.IfNumber();
  if (number == nullptr || other == nullptr) return a == b;
  return std::fabs(*number - *other) <= std::fabs(*number) * kPrecision;
}

bool IsSame(const Comments& a, const Comments& b) {
  return std::equal(a.all().begin(), a.all().end(), b.all().begin(), b.all().end(),
                    [](const auto& one, const auto& other) {
                      return one.first == other.first && *one.second == *other.second;
                    });
}

// Each area of each condition, since a file may tell one condition in several pieces.
std::vector<std::pair<Area, const Condition*>> AreasOf(const Conditions& conditions) {
  std::vector<std::pair<Area, const Condition*>> areas;
  for (const auto& condition : conditions.all()) {
    for (const Area& area : condition->areas) areas.emplace_back(area, condition.get());
  }
  return areas;
}

bool IsSame(const Conditions& a, const Conditions& b) {
  const auto areas = AreasOf(a);
  const auto others = AreasOf(b);
  return std::equal(areas.begin(), areas.end(), others.begin(), others.end(),
                    [](const auto& one, const auto& other) {
                      return one.first == other.first && one.second->op == other.second->op &&
                             one.second->formula1 == other.second->formula1 &&
                             one.second->formula2 == other.second->formula2;
                    });
}

std::string NameOfSheetOf(const ChartSeries& series) {
  const auto held = SheetOf(series);
  return held == nullptr ? "" : held->name;
}

// What is plotted; a series whose cells are gone has none.
bool IsSame(const ChartSeries& a, const ChartSeries& b) {
  return !b.values || (a.values == b.values && NameOfSheetOf(a) == NameOfSheetOf(b));
}

// Looks stand in the same parts as what is compared. A chart without a name gets one.
bool IsSame(const Chart& a, const Chart& b) {
  const auto title = [](const Chart& chart) { return chart.title ? CleanText(chart.title->text) : ""; };
  return (a.name.empty() || CleanText(a.name) == b.name) && a.kind == b.kind && title(a) == title(b) &&
         std::equal(a.series.begin(), a.series.end(), b.series.begin(), b.series.end(),
                    [](const auto& one, const auto& other) { return IsSame(one, other); });
}

bool IsSame(const std::vector<std::shared_ptr<Chart>>& a, const std::vector<std::shared_ptr<Chart>>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const auto& one, const auto& other) { return IsSame(*one, *other); });
}

// Sheets that are written anew have no formulas, so where one had no result nothing stands.
std::size_t CountCalculated(const CellGrid& cells) {
  std::size_t count = 0;
  cells.ForEach(Area::Sheet(), [&](std::int32_t, std::int32_t, const CellValue& value) {
    if (!value.IsNotCalculated()) ++count;
  });
  return count;
}

bool IsSame(const Sheet& a, const Sheet& b) {
  if (a.name != b.name || CountCalculated(a.cells) != b.cells.Count() || !IsSame(a.comments, b.comments) ||
      !IsSame(a.conditions, b.conditions) || !IsSame(a.charts.all, b.charts.all)) {
    return false;
  }
  bool is_same = true;
  a.cells.ForEach(Area::Sheet(), [&](std::int32_t row, std::int32_t column, const CellValue& value) {
    if (!is_same || value.IsNotCalculated()) return;
    const CellValue* other = b.cells.Find(row, column);
    is_same = other != nullptr && IsSame(value, *other);
  });
  return is_same;
}

bool IsSame(const std::vector<std::shared_ptr<Sheet>>& a, const std::vector<std::shared_ptr<Sheet>>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const auto& one, const auto& other) { return IsSame(*one, *other); });
}

// Whether they are the same where chart sheets and these sheets were kept as they stood in another file.
bool IsSame(const Book& a, const Book& b, const std::set<const Sheet*>& kept, const StaleResults& stale) {
  if (a.sheets.size() != b.sheets.size() || a.chart_sheets.size() != b.chart_sheets.size()) return false;
  static const std::vector<CellPlace> kNone;
  for (std::size_t i = 0; i < a.sheets.size(); ++i) {
    const Sheet& sheet = *a.sheets[i];
    const Sheet& other = *b.sheets[i];
    const auto left_out = stale.find(&sheet);
    const bool is_same =
        kept.contains(&sheet)
            ? sheet.name == other.name &&
                  IsUnchanged(sheet, other, left_out == stale.end() ? kNone : left_out->second)
            : IsSame(sheet, other);
    if (!is_same) return false;
  }
  return true;
}

// A file that goes beyond the limits cannot be opened again, and so is of no use.
std::shared_ptr<Book> Reread(std::span<const char> file) { return ReadWorkbook(file, {}).book; }
std::shared_ptr<Book> Reread(const std::filesystem::path& file) {
  return Reread(ReadWholeFile(file, LoadLimits().file_bytes));
}

// What is wrong with a file, by its name or its bytes; empty when nothing is.
template <class File, class IsWhatWasWritten>
std::string ProblemOf(const File& file, IsWhatWasWritten&& is_what_was_written) {
  try {
    return is_what_was_written(*Reread(file)) ? "" : "something is missing";
  } catch (const RuntimeError& error) {
    if (error.Number() != host::excel::kApplicationError) throw;
    return error.Description();
  }
}

void Require(const std::string& problem) {
  if (problem.empty()) return;
  throw DiskFull("Cannot save the workbook: what was written does not read back (" + problem +
                 "); the disk may be full, or the limit of file sizes too low (ulimit -f)");
}

}  // namespace

void CheckSaved(const Book& book, const std::filesystem::path& file) {
  Require(ProblemOf(file, [&](const Book& saved) {
    return IsSame(book.sheets, saved.sheets) && IsSame(book.chart_sheets, saved.chart_sheets);
  }));
}

void CheckSaved(const std::vector<std::shared_ptr<Sheet>>& sheets, std::span<const char> file) {
  Require(ProblemOf(file, [&](const Book& saved) { return IsSame(sheets, saved.sheets); }));
}

std::string ProblemOfSaved(const Book& book, const std::set<const Sheet*>& kept, const StaleResults& stale,
                           const std::filesystem::path& file) {
  return ProblemOf(file, [&](const Book& saved) { return IsSame(book, saved, kept, stale); });
}

}  // namespace mirelo::workbook
