#include "day/quote_sheet.h"

#include <algorithm>
#include <utility>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "day/cell_buffer.h"
#include "host/excel/application.h"
#include "host/excel/constants.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "worksheet/cell_text.h"
#include "worksheet/quote_table.h"

namespace mirelo::day {

namespace excel = host::excel;

namespace {

// How far apart a person may have moved them, all together.
constexpr std::int32_t kMostRowsBetweenTickers = 1000;

RuntimeError TableGone(const std::string& sheet) {
  return RuntimeError(9, "The quote table is no longer on the sheet \"" + sheet +
                             "\": its captions or its tickers are not to be found.");
}

}  // namespace

QuoteSheet::QuoteSheet(excel::Application& application, std::vector<std::string> columns)
    : sheet_(application.Worksheets()->Item(kQuoteTable)), columns_(std::move(columns)) {
  StandAt(CaptionsFromTheLeft(kHeaderRow, columns_.size()));
  for (std::int32_t row = kFirstTickerRow;; ++row) {
    std::string ticker = TextOf(*sheet_->Cells(row, 1));
    if (ticker.empty()) break;
    tickers_.push_back(std::move(ticker));
    rows_.push_back(row);
  }
  touched_.resize(tickers_.size());
}

std::string QuoteSheet::Title() const {
  return captions_.row > 1 ? TextOf(*sheet_->Cells(captions_.row - 1, captions_.columns.front())) : "";
}

void QuoteSheet::StandAt(CaptionRow captions) {
  captions_ = std::move(captions);
  values_ = captions_.Runs(1);
}

void QuoteSheet::LookAgain() {
  CaptionRow found = FindCaptions(*sheet_, columns_, captions_);
  if (found.row == 0) throw TableGone(sheet_->Name());
  if (found.columns.front() == 0) found.columns.front() = captions_.columns.front();  // the tickers tell
  StandAt(std::move(found));
  const auto count = static_cast<std::int32_t>(tickers_.size());
  if (FindTickers(count) == count) return;
  const std::int32_t last = sheet_->Cells(1, 1)->SpecialCells(excel::xlCellTypeLastCell)->Row();
  if (FindTickers(std::clamp(last - captions_.row, count, count + kMostRowsBetweenTickers)) == 0)
    throw TableGone(sheet_->Name());
}

// Of the same ticker several times, each keeps its own row. The result is how many were found.
std::int32_t QuoteSheet::FindTickers(std::int32_t most_rows) {
  std::ranges::fill(rows_, 0);
  const Variant cells =
      sheet_->Cells(captions_.row + 1, captions_.columns.front())->Resize(most_rows, 1)->Value();
  std::int32_t found = 0;
  for (std::int32_t r = 1; r <= most_rows; ++r) {
    const std::string text = TextOf(cells.IsArray() ? cells.AsArray()(r, 1) : cells);
    for (std::size_t ticker = 0; !text.empty() && ticker < tickers_.size(); ++ticker) {
      if (rows_[ticker] != 0 || tickers_[ticker] != text) continue;
      rows_[ticker] = captions_.row + r;
      ++found;
      break;
    }
  }
  return found;
}

void QuoteSheet::Touch(std::size_t row) { touched_[row] = true; }

void QuoteSheet::Write(const QuoteRows& rows, CellBuffer& buffer) {
  for (std::size_t row = 0; row < touched_.size(); ++row) {
    if (!touched_[row]) continue;
    std::size_t end = row + 1;
    if (rows_[row] != 0) {
      while (end < touched_.size() && touched_[end] && rows_[end] == rows_[end - 1] + 1) ++end;
      for (const CaptionRow::Run& columns : values_) WriteBlock(rows, row, end, columns, buffer);
    }
    // What a spreadsheet has refused is written the next time.
    std::fill(touched_.begin() + static_cast<std::ptrdiff_t>(row),
              touched_.begin() + static_cast<std::ptrdiff_t>(end), false);
    row = end - 1;
  }
}

void QuoteSheet::WriteBlock(const QuoteRows& rows, std::size_t first, std::size_t end,
                            const CaptionRow::Run& columns, CellBuffer& buffer) {
  const auto height = static_cast<std::int32_t>(end - first);
  const auto width = static_cast<std::int32_t>(columns.count);
  VariantArray& block = buffer.Renew(height, width);
  for (std::int32_t r = 1; r <= height; ++r) {
    const QuoteRow& row = rows[first + static_cast<std::size_t>(r) - 1];
    for (std::int32_t c = 1; c <= width; ++c)
      block(r, c) = row[columns.first + static_cast<std::size_t>(c) - 1].ToCell();
  }
  sheet_->Cells(rows_[first], columns.column)->Resize(height, width)->Value(buffer.Block());
}

std::string QuoteSheet::CellsOf(std::size_t row) const {
  if (rows_[row] == 0) return {};
  std::vector<std::string> blocks;
  for (const auto& [first, count, column] : values_) {
    const auto cells = sheet_->Cells(rows_[row], column)->Resize(1, static_cast<std::int32_t>(count));
    blocks.push_back(sheet_->Name() + "!" + cells->Address(false, false));
  }
  return Join(blocks, ", ");
}

void QuoteSheet::Fit() {
  for (const auto& [first, count, column] : captions_.Runs(0)) {
    sheet_->Cells(captions_.row, column)
        ->Resize(1, static_cast<std::int32_t>(count))
        ->EntireColumn()
        ->AutoFit();
  }
}

}  // namespace mirelo::day
