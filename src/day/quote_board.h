#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/cQTData.h"
#include "day/quote_rows.h"

namespace mirelo {
struct StreamedField;
}

namespace mirelo::day {

// What is known of each ticker. A streamed quote changes what its record carried, zeros included; what the
// record lacked stays as it was. Only LastVolume is always that of the newest quote.
class QuoteBoard {
 public:
  // All that a streamed quote can show, in an order for reading.
  static const std::vector<std::string>& AllColumns();

  // The board has a row for each of these tickers from the start, and for others when they come. The first
  // column holds the tickers; one that quotes do not have stays empty. `columns` are found without regard to
  // case.
  QuoteBoard(std::vector<std::string> columns, const std::vector<std::string>& tickers);

  // Notes a streamed quote; the result is the number of its ticker's row, from 0. Of rows with the same
  // ticker it is the first.
  std::size_t Take(const cQTData& quote);
  // Whether a streamed quote can show in the columns at all, and whether this one changes anything there.
  bool ShowsQuotes() const { return !sources_.empty(); }
  bool Shows(const cQTData& quote) const;
  // Notes all that is known of the ticker in this row.
  void Put(std::size_t row, QuoteRow values) { rows_[row] = std::move(values); }

  const std::vector<std::string>& Columns() const { return columns_; }
  const QuoteRows& Rows() const { return rows_; }
  std::int64_t QuoteCount() const { return quote_count_; }

 private:
  std::size_t RowOf(const std::string& ticker);
  void AddRow(const std::string& ticker);

  struct Source {
    std::size_t column;
    const StreamedField* streamed;
    bool of_newest;  // whether it is always that of the newest quote
  };

  std::vector<std::string> columns_;
  std::vector<Source> sources_;                          // of what streamed quotes bring
  std::unordered_map<std::string, std::size_t> places_;  // by the ticker in capital letters
  QuoteRows rows_;
  std::int64_t quote_count_ = 0;
};

// One quote by itself, a value for each of AllColumns; nothing for what its record lacked. LastVolume is
// there where the record has a volume, of which it is worked out.
QuoteRow QuoteFields(const cQTData& quote);
// The same in place of the values of another quote, which are as many.
void LetQuoteFields(const cQTData& quote, QuoteRow& fields);

}  // namespace mirelo::day
