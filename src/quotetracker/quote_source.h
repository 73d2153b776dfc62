#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "quotetracker/moment.h"
#include "quotetracker/quote.h"

namespace mirelo::quotetracker {

// A change of one of the tickers that were subscribed to.
struct QuoteChange {
  const Quote* quote = nullptr;  // null when there is no change
  std::size_t ticker = 0;        // its index among those subscribed to
};

// The changes of some tickers, one after the other.
class QuoteUpdates {
 public:
  virtual ~QuoteUpdates() = default;

  // The quote of one of the tickers, by its index, as it stands now: no change that Next gives later is
  // older than it. Valid for as long as Next's.
  virtual const Quote& Look(std::size_t ticker) = 0;

  // The next change, if one is due now. Its quote holds until the next call of any member of this or its
  // source.
  virtual QuoteChange Next() = 0;
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

  // The changes of these tickers from now on. The source outlives them.
  virtual std::unique_ptr<QuoteUpdates> Subscribe(const std::vector<std::string>& tickers) = 0;
};

}  // namespace mirelo::quotetracker
