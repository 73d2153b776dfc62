#include "day/quote_sheet.h"

#include <algorithm>
#include <utility>

#include "automation/variant.h"
#include "day/cell_buffer.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "worksheet/cell_text.h"
#include "worksheet/quote_table.h"

namespace mirelo::day {

namespace excel = host::excel;

QuoteSheet::QuoteSheet(excel::Application& application, std::vector<std::string> columns)
    : sheet_(application.Worksheets()->Item(kQuoteTable)), columns_(std::move(columns)) {
  for (std::int32_t row = kFirstTickerRow;; ++row) {
    std::string ticker = TextOf(*sheet_->Cells(row, 1));
    if (ticker.empty()) break;
    tickers_.push_back(std::move(ticker));
  }
  touched_.resize(tickers_.size());
}

std::string QuoteSheet::Title() const { return TextOf(*sheet_->Range("A1")); }

void QuoteSheet::Touch(std::size_t row) { touched_[row] = true; }

void QuoteSheet::Write(const QuoteRows& rows, CellBuffer& buffer) {
  for (std::size_t row = 0; row < touched_.size(); ++row) {
    if (!touched_[row]) continue;
    std::size_t end = row;
    for (; end < touched_.size() && touched_[end]; ++end) touched_[end] = false;
    WriteBlock(rows, row, end, buffer);
    row = end;
  }
}

void QuoteSheet::WriteBlock(const QuoteRows& rows, std::size_t first, std::size_t end, CellBuffer& buffer) {
  if (columns_.size() < 2) return;
  const auto height = static_cast<std::int32_t>(end - first);
  const auto width = static_cast<std::int32_t>(columns_.size()) - 1;
  VariantArray& block = buffer.Renew(height, width);
  for (std::int32_t r = 1; r <= height; ++r) {
    const QuoteRow& row = rows[first + static_cast<std::size_t>(r) - 1];
    for (std::int32_t c = 1; c <= width; ++c) {
      const auto column = static_cast<std::size_t>(c);
      block(r, c) = row[column].ToCell();
    }
  }
  sheet_->Cells(kFirstTickerRow + static_cast<std::int32_t>(first), 2)
      ->Resize(height, width)
      ->Value(buffer.Block());
}

std::string QuoteSheet::CellsOf(std::size_t row) const {
  if (columns_.size() < 2) return {};
  const auto width = static_cast<std::int32_t>(columns_.size()) - 1;
  const auto first = sheet_->Cells(kFirstTickerRow + static_cast<std::int32_t>(row), 2);
  return sheet_->Name() + "!" + first->Resize(1, width)->Address(false, false);
}

void QuoteSheet::Fit() {
  sheet_->Cells(kHeaderRow, 1)
      ->Resize(1, static_cast<std::int32_t>(columns_.size()))
      ->EntireColumn()
      ->AutoFit();
}

}  // namespace mirelo::day
