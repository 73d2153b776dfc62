#include "adapters/workbook/xlsx/origin.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "adapters/workbook/xlsx/sheet_changes.h"

namespace mirelo::workbook {

Origin::Origin(std::vector<char> file, const LoadLimits& limits, const LoadedBook& loaded)
    : limits_(limits), entries_(loaded.entries), losses_(loaded.losses) {
  if (loaded.can_be_carried) file_ = std::move(file);
}

std::optional<Origin::Kept> Origin::KeptSheets(const Book& book) const {
  if (file_.empty()) return std::nullopt;
  const LoadedBook again = ReadWorkbook(file_, limits_);
  if (!AreChartSheetsUnchanged(book, again)) return std::nullopt;
  Kept kept;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const auto& [sheet, standing, chart, part] = entries_[i];
    if (sheet == nullptr) continue;
    const bool is_there = std::find(book.sheets.begin(), book.sheets.end(), sheet) != book.sheets.end();
    const Sheet& loaded = *again.entries[i].sheet;
    if (!is_there || sheet->name != loaded.name) return std::nullopt;
    if (IsUnchanged(*sheet, loaded)) {
      kept.insert(sheet.get());
    } else if (standing.is_referred_to) {
      return std::nullopt;
    }
  }
  return kept;
}

bool Origin::AreChartSheetsUnchanged(const Book& book, const LoadedBook& again) const {
  std::size_t place = 0;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const auto& chart = entries_[i].chart;
    if (chart == nullptr) continue;
    if (place == book.chart_sheets.size() || book.chart_sheets[place] != chart) return false;
    if (!IsUnchanged(*chart, *again.entries[i].chart, "")) return false;
    ++place;
  }
  return place == book.chart_sheets.size();
}

std::vector<Loss> Origin::Losses(const std::optional<Kept>& kept) const {
  const auto is_rewritten = [&](const LoadedBook::Entry& entry) {
    return entry.sheet != nullptr && !(kept && kept->contains(entry.sheet.get()));
  };
  const bool are_formats_lost =
      std::any_of(entries_.begin(), entries_.end(), [&](const LoadedBook::Entry& entry) {
        return is_rewritten(entry) && entry.standing.has_lossy_formats;
      });
  const auto is_lost = [&](const Loss& loss) {
    switch (loss.of) {
      case Loss::Of::Workbook:
        return !kept.has_value();
      case Loss::Of::Formats:
        return are_formats_lost || !kept;
      case Loss::Of::Sheet:
        return !kept || std::any_of(entries_.begin(), entries_.end(), [&](const LoadedBook::Entry& entry) {
          return is_rewritten(entry) && entry.sheet->name == loss.sheet;
        });
      case Loss::Of::File:
        break;
    }
    return true;
  };
  std::vector<Loss> lost;
  std::ranges::copy_if(losses_, std::back_inserter(lost), is_lost);
  return lost;
}

}  // namespace mirelo::workbook
