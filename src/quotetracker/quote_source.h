#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "quotetracker/moment.h"
#include "quotetracker/quote.h"

namespace mirelo::quotetracker {

// The changes of some tickers, one behind the other.
class QuoteUpdates {
 public:
  virtual ~QuoteUpdates() = default;

  // The next change; null when none is due now. Holds until the next call of any member of this or its
  // source.
  virtual const Quote* Next() = 0;
};

// Where quotes come from: a market that is made up as it is looked at, or the replay of a file. Used on one
// thread.
class QuoteSource {
 public:
  virtual ~QuoteSource() = default;

  // The market's present moment.
  virtual Moment Now() = 0;

  // The quote of a ticker as of now. The reference holds until the next call of any member.
  virtual const Quote& Look(std::string_view ticker) = 0;

  // The changes from now on. The source outlives them.
  virtual std::unique_ptr<QuoteUpdates> Subscribe(std::vector<std::string> tickers) = 0;
};

}  // namespace mirelo::quotetracker
