#include "quotetracker/market.h"

#include <utility>

#include "quotetracker/ascii.h"
#include "quotetracker/random.h"

namespace mirelo::quotetracker {

Market::Market(std::uint64_t seed, Clock clock, std::size_t most_tickers)
    : seed_(seed), clock_(std::move(clock)), most_tickers_(most_tickers) {}

Moment Market::Now() { return clock_(); }

const Quote& Market::Look(std::string_view ticker) {
  const Moment now = clock_();
  Walk& walk = WalkOf(ticker);
  walk.Step(now);
  return walk.Current();
}

class Market::Updates : public QuoteUpdates {
 public:
  Updates(Market& market, std::vector<std::string> tickers)
      : market_(market), tickers_(std::move(tickers)), chance_(market.seed_) {}

  const Quote& Look(std::size_t ticker) override { return market_.Look(tickers_[ticker]); }

  QuoteChange Next() override {
    if (tickers_.empty()) return {};
    const auto last = static_cast<std::int64_t>(tickers_.size()) - 1;
    const auto ticker = static_cast<std::size_t>(chance_.Between(0, last));
    return {&Look(ticker), ticker};
  }

 private:
  Market& market_;
  std::vector<std::string> tickers_;
  Random chance_;
};

std::unique_ptr<QuoteUpdates> Market::Subscribe(const std::vector<std::string>& tickers) {
  return std::make_unique<Updates>(*this, tickers);
}

Walk& Market::WalkOf(std::string_view ticker) {
  key_.assign(ticker);
  std::ranges::transform(key_, key_.begin(), ToUpper);
  const auto known = walks_.find(key_);
  if (known != walks_.end()) return known->second;

  // The empty ticker stands for all that is not remembered.
  const bool full = walks_.size() >= most_tickers_;
  return walks_.insert_or_assign(full ? std::string() : key_, Walk(seed_, key_, clock_())).first->second;
}

}  // namespace mirelo::quotetracker
