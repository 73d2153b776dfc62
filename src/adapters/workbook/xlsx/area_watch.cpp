#include "adapters/workbook/xlsx/area_watch.h"

#include <algorithm>

namespace mirelo::workbook {

namespace {

constexpr std::size_t kMostPieces = 128;  // of one area

}  // namespace

void AreaWatch::Add(const Area& area, Who who) {
  const std::vector<Run> rows = RunsOf(area.first_row, area.last_row);
  std::vector<Run> columns = RunsOf(area.first_column, area.last_column);
  if (rows.size() * columns.size() > kMostPieces) columns = {RunAround(area.first_column, area.last_column)};
  for (const Run& row_run : rows) {
    for (const Run& column_run : columns) {
      entries_.push_back({PieceOf(row_run, column_run), who});
      is_used_[row_run.level][column_run.level] = true;
    }
  }
  is_sorted_ = false;
}

std::vector<AreaWatch::Who> AreaWatch::Take(const CellPlace& cell) {
  if (questions_ > kMostQuestions) return TakeAll();
  Sort();
  const auto row = static_cast<std::uint32_t>(cell.row - 1);
  const auto column = static_cast<std::uint32_t>(cell.column - 1);
  std::vector<Who> told;
  for (std::uint32_t row_level = 0; row_level < kRowLevels; ++row_level) {
    for (std::uint32_t column_level = 0; column_level < kColumnLevels; ++column_level) {
      if (!is_used_[row_level][column_level]) continue;
      ++questions_;
      const std::uint64_t piece =
          PieceOf({row_level, row >> row_level}, {column_level, column >> column_level});
      const auto is_before = [](const Entry& entry, std::uint64_t p) { return entry.piece < p; };
      const auto first = std::lower_bound(entries_.begin(), entries_.end(), piece, is_before);
      if (first == entries_.end() || first->piece != piece || first->who == kTaken) continue;
      for (auto entry = first; entry != entries_.end() && entry->piece == piece; ++entry)
        told.push_back(entry->who);
      first->who = kTaken;
    }
  }
  return told;
}

std::vector<AreaWatch::Who> AreaWatch::TakeAll() {
  std::vector<Who> told;
  for (const Entry& entry : entries_) {
    if (entry.who != kTaken) told.push_back(entry.who);
  }
  entries_.clear();
  return told;
}

// The fewest runs that make up first to last.
std::vector<AreaWatch::Run> AreaWatch::RunsOf(std::int32_t first, std::int32_t last) {
  std::vector<Run> runs;
  auto from = static_cast<std::uint32_t>(first - 1);
  auto end = static_cast<std::uint32_t>(last);
  for (std::uint32_t level = 0; from < end; ++level, from >>= 1, end >>= 1) {
    if ((from & 1) != 0) runs.push_back({level, from++});
    if ((end & 1) != 0) runs.push_back({level, --end});
  }
  return runs;
}

// The one run that holds first to last.
AreaWatch::Run AreaWatch::RunAround(std::int32_t first, std::int32_t last) {
  Run run{0, static_cast<std::uint32_t>(first - 1)};
  for (auto end = static_cast<std::uint32_t>(last - 1); run.index != end; end >>= 1) {
    ++run.level;
    run.index >>= 1;
  }
  return run;
}

std::uint64_t AreaWatch::PieceOf(const Run& rows, const Run& columns) {
  return ((std::uint64_t{rows.level} << 20 | rows.index) << 4 | columns.level) << 14 | columns.index;
}

void AreaWatch::Sort() {
  if (is_sorted_) return;
  std::sort(entries_.begin(), entries_.end(),
            [](const Entry& a, const Entry& b) { return a.piece < b.piece; });
  is_sorted_ = true;
}

}  // namespace mirelo::workbook
