#include "app/quote_sheet.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "automation/number.h"
#include "automation/regional_format.h"
#include "automation/variant.h"
#include "host/excel/application.h"
#include "host/excel/constants.h"
#include "host/excel/font.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo::app {

namespace excel = host::excel;

namespace {

constexpr std::int32_t kHeaderRow = 2;
constexpr std::int32_t kFirstRow = 3;

constexpr std::array<std::string_view, 8> kPriceColumns{"High",     "Low",  "Open", "52w Low",
                                                        "52w High", "Last", "Bid",  "Ask"};
constexpr std::array<std::string_view, 6> kCountColumns{"Volume",     "BidSize",  "AskSize",
                                                        "LastVolume", "AvgTrade", "NumTrades"};

template <std::size_t N>
bool Holds(const std::array<std::string_view, N>& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

std::shared_ptr<excel::Worksheet> FindOrAdd(excel::Application& application) {
  const auto sheets = application.ActiveWorkbook()->Worksheets();
  for (std::int32_t i = 1; i <= sheets->Count(); ++i) {
    if (auto sheet = sheets->Item(i); sheet->Name() == QuoteSheet::kName) return sheet;
  }
  auto sheet = sheets->Add();
  sheet->Name(QuoteSheet::kName);
  return sheet;
}

// A quote comes from outside: what is no number or date must stay text, whatever a spreadsheet would make of
// it. The apostrophe says so and is not part of the cell's text.
Variant AsText(const std::string& text) { return text.empty() ? Variant() : Variant("'" + text); }

Variant CellValue(const std::string& column, const std::string& text) {
  if (column == "Ticker") return AsText(text);
  if (column == "Date" || column == "Time") {
    const auto date = ParseDate(text, RegionalFormat::Standard());
    return date ? Variant(*date) : AsText(text);
  }
  const auto number = ParseNumber(text);
  return number && std::isfinite(*number) ? Variant(*number) : AsText(text);
}

std::string NumberFormatOf(const std::string& column, const std::string& price_format) {
  if (Holds(kPriceColumns, column)) return price_format;
  if (Holds(kCountColumns, column)) return "#,##0";
  if (column == "Date") return "mm/dd/yyyy";
  if (column == "Time") return "hh:mm:ss";
  if (column == "Change") return "+ " + price_format + ";- " + price_format;
  return "General";
}

bool IsCentred(const std::string& column) {
  return column == "Date" || column == "Time" || column == "Change";
}

}  // namespace

QuoteSheet::QuoteSheet(excel::Application& application, const std::string& caption,
                       std::vector<std::string> columns, const std::vector<std::string>& tickers,
                       const std::string& price_format)
    : sheet_(FindOrAdd(application)),
      columns_(std::move(columns)),
      row_count_(static_cast<std::int32_t>(tickers.size())) {
  ClearFrame();
  WriteFrame(caption, tickers);
  FormatColumns(price_format);
}

void QuoteSheet::Write(const QuoteRows& rows) {
  const auto column_count = static_cast<std::int32_t>(columns_.size());
  VariantArray block(1, row_count_, 1, column_count);
  for (std::int32_t r = 1; r <= row_count_; ++r) {
    for (std::int32_t c = 1; c <= column_count; ++c) {
      const auto column = static_cast<std::size_t>(c - 1);
      block(r, c) = CellValue(columns_[column], rows[static_cast<std::size_t>(r - 1)][column]);
    }
  }
  sheet_->Cells(kFirstRow, 1)->Resize(row_count_, column_count)->Value(std::move(block));
  sheet_->Cells(1, 1)->Resize(1, column_count)->EntireColumn()->AutoFit();
}

void QuoteSheet::ClearFrame() {
  // The old table reaches as far right as its headers and as far down as its tickers.
  const auto first_header = sheet_->Cells(kHeaderRow, 1);
  const auto last_row = sheet_->Rows()->Count();
  const auto last_column = sheet_->Columns()->Count();
  const auto header_end = first_header->End(excel::xlToRight)->Column();
  const auto ticker_end = first_header->End(excel::xlDown)->Row();
  const auto width = header_end == last_column ? 1 : header_end;
  const auto height = ticker_end == last_row ? 1 : ticker_end - kHeaderRow + 1;
  first_header
      ->Resize(std::max(height, row_count_ + 1), std::max(width, static_cast<std::int32_t>(columns_.size())))
      ->Clear();
}

void QuoteSheet::WriteFrame(const std::string& caption, const std::vector<std::string>& tickers) {
  sheet_->Cells(1, 1)->Value(AsText(caption));
  for (std::size_t c = 0; c < columns_.size(); ++c) {
    sheet_->Cells(kHeaderRow, static_cast<std::int32_t>(c) + 1)->Value(AsText(columns_[c]));
  }
  const auto header = sheet_->Cells(kHeaderRow, 1)->Resize(1, static_cast<std::int32_t>(columns_.size()));
  header->Font()->Bold(true);
  header->HorizontalAlignment(excel::xlHAlignCenter);
  for (std::size_t r = 0; r < tickers.size(); ++r) {
    sheet_->Cells(kFirstRow + static_cast<std::int32_t>(r), 1)->Value(AsText(tickers[r]));
  }
}

void QuoteSheet::FormatColumns(const std::string& price_format) {
  for (std::size_t c = 0; c < columns_.size(); ++c) {
    const auto cells = sheet_->Cells(kFirstRow, static_cast<std::int32_t>(c) + 1)->Resize(row_count_, 1);
    cells->NumberFormat(NumberFormatOf(columns_[c], price_format));
    if (IsCentred(columns_[c])) cells->HorizontalAlignment(excel::xlHAlignCenter);
  }
}

}  // namespace mirelo::app
