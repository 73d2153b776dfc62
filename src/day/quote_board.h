#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/cQTData.h"
#include "day/quote_rows.h"

namespace mirelo::day {

// What is known of each ticker of a stream. What a quote's record carried takes its place here, zeros among
// it; what it lacked stays as it was. LastVolume alone is not kept: it is always that of the newest quote.
class QuoteBoard {
 public:
  // All that a streamed quote can show, in an order for reading.
  static const std::vector<std::string>& AllColumns();

  // The board has a row for each of these tickers from the start, and for others when they come. A column
  // that quotes do not have stays empty. `columns` are found without regard to case.
  QuoteBoard(std::vector<std::string> columns, const std::vector<std::string>& tickers);

  // Notes a streamed quote; the result is the number of its ticker's row, from 0.
  std::size_t Take(const cQTData& quote);

  const std::vector<std::string>& Columns() const { return columns_; }
  const QuoteRows& Rows() const { return rows_; }
  std::int64_t QuoteCount() const { return quote_count_; }

 private:
  std::size_t RowOf(const std::string& ticker);

  std::vector<std::string> columns_;
  std::vector<std::size_t> fields_;  // of the columns, as numbers of all columns
  std::unordered_map<std::string, std::size_t> places_;
  QuoteRows rows_;
  std::int64_t quote_count_ = 0;
};

// All columns of one quote alone; what its record lacked is empty. LastVolume is what a record with a volume
// brings.
QuoteRow QuoteFields(const cQTData& quote);

}  // namespace mirelo::day
