#include "adapters/workbook/xlsx/saved_check.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "adapters/workbook/atomic_file.h"
#include "adapters/workbook/errors.h"
#include "adapters/workbook/text_units.h"
#include "adapters/workbook/xlsx/sheet_changes.h"
#include "adapters/workbook/xlsx/workbook_reader.h"

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

std::string NameOf(const std::weak_ptr<Sheet>& sheet) {
  const auto held = sheet.lock();
  return held == nullptr ? "" : held->name;
}

// What is plotted; a series whose cells are gone has none.
bool IsSame(const ChartSeries& a, const ChartSeries& b) {
  return !b.values || (a.values == b.values && NameOf(a.sheet) == NameOf(b.sheet));
}

// Looks stand in the same parts as what is compared. A chart without a name gets one.
bool IsSame(const Chart& a, const Chart& b) {
  const auto title = [](const Chart& chart) { return chart.title ? CleanText(chart.title->text) : ""; };
  return (a.name.empty() || CleanText(a.name) == b.name) && a.type == b.type && title(a) == title(b) &&
         std::equal(a.series.begin(), a.series.end(), b.series.begin(), b.series.end(),
                    [](const auto& one, const auto& other) { return IsSame(one, other); });
}

bool IsSame(const std::vector<std::shared_ptr<Chart>>& a, const std::vector<std::shared_ptr<Chart>>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const auto& one, const auto& other) { return IsSame(*one, *other); });
}

bool IsSame(const Sheet& a, const Sheet& b) {
  if (a.name != b.name || a.cells.Count() != b.cells.Count() || !IsSame(a.comments, b.comments) ||
      !IsSame(a.conditions, b.conditions) || !IsSame(a.charts.all, b.charts.all)) {
    return false;
  }
  bool is_same = true;
  a.cells.ForEach(Area::Sheet(), [&](std::int32_t row, std::int32_t column, const CellValue& value) {
    if (!is_same) return;
    const CellValue* other = b.cells.Find(row, column);
    is_same = other != nullptr && IsSame(value, *other);
  });
  return is_same;
}

bool IsSame(const Book& a, const Book& b) {
  if (a.sheets.size() != b.sheets.size() || !IsSame(a.chart_sheets, b.chart_sheets)) return false;
  for (std::size_t i = 0; i < a.sheets.size(); ++i) {
    if (!IsSame(*a.sheets[i], *b.sheets[i])) return false;
  }
  return true;
}

// The same where chart sheets and these sheets were kept as they stood in another file.
bool IsSame(const Book& a, const Book& b, const std::set<const Sheet*>& kept) {
  if (a.sheets.size() != b.sheets.size() || a.chart_sheets.size() != b.chart_sheets.size()) return false;
  for (std::size_t i = 0; i < a.sheets.size(); ++i) {
    const Sheet& sheet = *a.sheets[i];
    const Sheet& other = *b.sheets[i];
    const bool is_same =
        kept.contains(&sheet) ? sheet.name == other.name && IsUnchanged(sheet, other) : IsSame(sheet, other);
    if (!is_same) return false;
  }
  return true;
}

// What is wrong with the file; empty when nothing is.
std::string ProblemOf(const std::filesystem::path& file,
                      const std::function<bool(const Book&)>& is_what_was_written) {
  const LoadLimits limits;  // a file that cannot be opened again is of no use
  try {
    const std::vector<char> bytes = ReadWholeFile(file, limits.file_bytes);
    return is_what_was_written(*ReadWorkbook(bytes, limits).book) ? "" : "something is missing";
  } catch (const RuntimeError& error) {
    if (error.Number() != host::excel::kApplicationError) throw;
    return error.Description();
  }
}

void Check(const std::filesystem::path& file, const std::function<bool(const Book&)>& is_what_was_written) {
  const std::string problem = ProblemOf(file, is_what_was_written);
  if (problem.empty()) return;
  throw DiskFull("Cannot save the workbook: what was written does not read back (" + problem +
                 "); the disk may be full.");
}

}  // namespace

void CheckSaved(const Book& book, const std::filesystem::path& file) {
  Check(file, [&](const Book& saved) { return IsSame(book, saved); });
}

void CheckSaved(const Book& book, const std::set<const Sheet*>& kept, const std::filesystem::path& file) {
  Check(file, [&](const Book& saved) { return IsSame(book, saved, kept); });
}

}  // namespace mirelo::workbook
