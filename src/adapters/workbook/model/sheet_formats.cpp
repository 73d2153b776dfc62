#include "adapters/workbook/model/sheet_formats.h"

#include <unordered_map>

namespace mirelo::workbook {

namespace {

// The style that most rows have.
StyleId MainStyle(const StyleGrid::Rows& rows) {
  std::unordered_map<StyleId, std::int32_t> counts;
  StyleId main = kDefaultStyle;
  std::int32_t most = 0;
  rows.ForEach(1, kRows, [&](std::int32_t first, std::int32_t last, StyleId style) {
    std::int32_t& count = counts[style];
    count += last - first + 1;
    if (count > most) {
      most = count;
      main = style;
    }
  });
  return main;
}

}  // namespace

SheetFormats::SheetFormats(const StyleGrid& styles) {
  styles.ForEachColumnRun([&](std::int32_t first, std::int32_t last, const StyleGrid::Rows& rows) {
    columns_.push_back({first, last, MainStyle(rows), &rows});
  });
  const Columns& right_edge = columns_.back();
  right_edge.rows->ForEach(1, kRows, [&](std::int32_t first, std::int32_t last, StyleId style) {
    if (style == right_edge.style) return;
    rows_.push_back({first, last, style});
    by_last_row_.emplace_hint(by_last_row_.end(), last, rows_.back());
  });
}

std::int64_t SheetFormats::CountExceptions() const {
  std::int64_t count = 0;
  ForEachException(1, kRows, [&](const Area& area, StyleId) { count += area.Cells(); });
  return count;
}

}  // namespace mirelo::workbook
