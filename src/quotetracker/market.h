#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "quotetracker/quote_source.h"
#include "quotetracker/walk.h"

namespace mirelo::quotetracker {

// A made-up market, which knows every ticker, upper and lower case alike. Each look at a ticker takes that
// ticker, and no other, one step along its path: so for one seed the n-th look at "MSFT" always says the
// same, whatever else was looked at before. Only date and time come from the clock.
class Market : public QuoteSource {
 public:
  static constexpr std::size_t kMostTickers = 200'000;

  // At most `most_tickers` are remembered. One beyond them is new at each look, so that a flood of names
  // costs no memory.
  explicit Market(std::uint64_t seed, Clock clock = SystemClock(), std::size_t most_tickers = kMostTickers);

  Moment Now() override;
  const Quote& Look(std::string_view ticker) override;
  // Each change is a look at one of the tickers, chosen by chance.
  std::unique_ptr<QuoteUpdates> Subscribe(const std::vector<std::string>& tickers) override;

 private:
  class Updates;

  Walk& WalkOf(std::string_view ticker);

  std::uint64_t seed_;
  Clock clock_;
  std::size_t most_tickers_;
  std::string key_;  // the ticker in upper case; kept so that a look allocates nothing
  std::unordered_map<std::string, Walk> walks_;
};

}  // namespace mirelo::quotetracker
