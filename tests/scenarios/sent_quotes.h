#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace mirelo::testing {

// The quotes of one ticker that QuoteTrackers send over a day, numbered from 1 on. A quote's price and its
// volume both tell its number, so that whoever sees them later knows whether they belong together, and which
// quote came first. Members may be called from any thread.
class SentQuotes {
 public:
  // The price of the first quote lies a cent above `cents`.
  SentQuotes(std::string ticker, std::int32_t cents) : ticker_(std::move(ticker)), cents_(cents) {}

  const std::string& Ticker() const { return ticker_; }
  // The number of the newest quote; 0 before the first.
  std::int32_t Newest() const { return newest_; }
  // Makes the next quote, and gives its number.
  std::int32_t Next() { return ++newest_; }
  // The same as a record of the stream.
  std::string NextRecord(std::string_view kind = "L1");
  // The same as a line of a reply to a request for quotes.
  std::string NextLine();

  double Last(std::int32_t number) const { return (cents_ + number) / 100.0; }
  static std::int64_t Volume(std::int32_t number) { return std::int64_t{100} * number; }
  std::string LastText(std::int32_t number) const;

  // The quote that has this price and this volume; 0 when none was made that has both.
  std::int32_t NumberOf(double last, double volume) const;

 private:
  std::string ticker_;
  std::int32_t cents_;
  std::atomic<std::int32_t> newest_ = 0;
};

}  // namespace mirelo::testing
