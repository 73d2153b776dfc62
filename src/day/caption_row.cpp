#include "day/caption_row.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "automation/text.h"
#include "automation/variant.h"
#include "host/excel/constants.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"

namespace mirelo::day {

namespace excel = host::excel;

namespace {

// Further from the sheet's corner nobody moves a table, and a sheet may be full of other things.
constexpr std::int32_t kMostRows = 200;
constexpr std::int32_t kMostColumns = 256;

std::int32_t CountFound(const CaptionRow& row) {
  return static_cast<std::int32_t>(
      std::ranges::count_if(row.columns, [](std::int32_t column) { return column != 0; }));
}

class Captions {
 public:
  Captions(excel::Worksheet& sheet, const std::vector<std::string>& captions)
      : sheet_(sheet), captions_(captions) {}

  // What stands in these rows, from the left on.
  std::vector<CaptionRow> In(std::int32_t first, std::int32_t height, std::int32_t width) const {
    const Variant block = sheet_.Cells(first, 1)->Resize(height, width)->Value();
    std::vector<CaptionRow> rows;
    for (std::int32_t r = 1; r <= height; ++r) {
      CaptionRow& row = rows.emplace_back();
      row.row = first + r - 1;
      row.columns.resize(captions_.size());
      for (std::int32_t c = 1; c <= width; ++c)
        Note(block.IsArray() ? block.AsArray()(r, c) : block, c, row.columns);
    }
    return rows;
  }

 private:
  void Note(const Variant& value, std::int32_t column, std::vector<std::int32_t>& columns) const {
    if (!value.IsText()) return;
    const std::string text = value.ToText();
    for (std::size_t i = 0; i < captions_.size(); ++i) {
      if (columns[i] != 0 || !EqualText(captions_[i], text)) continue;
      columns[i] = column;
      return;
    }
  }

  excel::Worksheet& sheet_;
  const std::vector<std::string>& captions_;
};

}  // namespace

std::vector<CaptionRow::Run> CaptionRow::Runs(std::size_t first) const {
  std::vector<Run> runs;
  for (std::size_t i = first; i < columns.size(); ++i) {
    if (columns[i] == 0) continue;
    if (!runs.empty()) {
      auto& [begin, count, column] = runs.back();
      if (begin + count == i && column + static_cast<std::int32_t>(count) == columns[i]) {
        ++count;
        continue;
      }
    }
    runs.push_back({i, 1, columns[i]});
  }
  return runs;
}

CaptionRow CaptionsFromTheLeft(std::int32_t row, std::size_t count) {
  CaptionRow captions{row, std::vector<std::int32_t>(count)};
  std::iota(captions.columns.begin(), captions.columns.end(), 1);
  return captions;
}

CaptionRow FindCaptions(excel::Worksheet& sheet, const std::vector<std::string>& captions,
                        const CaptionRow& before) {
  const Captions wanted(sheet, captions);
  const auto count = static_cast<std::int32_t>(captions.size());
  const std::int32_t last = before.columns.empty() ? 0 : std::ranges::max(before.columns);
  // Most of what people do leaves the captions where they are.
  if (before.row > 0) {
    if (CaptionRow there = wanted.In(before.row, 1, std::max(last, count)).front(); there == before)
      return there;
  }
  const auto end = sheet.Cells(1, 1)->SpecialCells(excel::xlCellTypeLastCell);
  const std::int32_t width = std::min(std::max({last, count, end->Column()}), kMostColumns);
  if (before.row > 0) {
    if (CaptionRow there = wanted.In(before.row, 1, width).front(); CountFound(there) > 0) return there;
  }
  const auto rows = wanted.In(1, std::min(end->Row(), kMostRows), width);
  const auto most = std::ranges::max_element(rows, {}, CountFound);
  return CountFound(*most) > 0 ? *most : CaptionRow{};
}

}  // namespace mirelo::day
