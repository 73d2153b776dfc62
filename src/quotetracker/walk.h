#pragma once

#include <cstdint>
#include <string_view>

#include "quotetracker/moment.h"
#include "quotetracker/quote.h"
#include "quotetracker/random.h"

namespace mirelo::quotetracker {

// The path of one ticker: a price that wanders about the previous close and is drawn back to it, so that no
// number of steps carries it away, and trades between bid and ask. Step n is the same for the same seed and
// ticker, on every machine and whatever other tickers do.
//
// At every step: low_52 <= low <= last <= high <= high_52, bid < ask, and within a day the volume and the
// number of trades never fall.
class Walk {
 public:
  // A day that is already some way on. `moment` is the market's present.
  Walk(std::uint64_t seed, std::string_view ticker, Moment moment);

  // One step further: new sizes and a new spread, and mostly a trade. On a later day than the step before,
  // the day begins anew from the last price.
  void Step(Moment moment);

  const Quote& Current() const { return quote_; }

 private:
  void OpenDay(Price open);
  void Wander();
  void QuoteSpread();
  void Trade();
  void Reach(Price price);
  Price MiddlePrice() const;

  Random random_;
  std::chrono::local_days day_;
  double middle_ = 0;  // between bid and ask, in price units
  Quote quote_;
};

}  // namespace mirelo::quotetracker
