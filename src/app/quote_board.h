#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/cQTData.h"

namespace mirelo::app {

// What is known of each ticker of a stream. A streamed quote holds only what its record carried; the board
// keeps the rest from before.
class QuoteBoard {
 public:
  static const std::vector<std::string>& Columns();

  // The board shows a row for each of these from the start, and for others when they come.
  explicit QuoteBoard(const std::vector<std::string>& tickers);

  void Take(const cQTData& quote);

  // A row per ticker; a cell that nothing is known of is empty.
  std::vector<std::vector<std::string>> Rows() const;
  std::int64_t QuoteCount() const { return quote_count_; }

 private:
  std::vector<std::string>& RowOf(const std::string& ticker);

  std::unordered_map<std::string, std::size_t> places_;
  std::vector<std::vector<std::string>> rows_;
  std::int64_t quote_count_ = 0;
};

// The same columns of one quote alone; what its record lacked is empty.
std::vector<std::string> QuoteFields(const cQTData& quote);

}  // namespace mirelo::app
