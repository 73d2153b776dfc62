#pragma once

#include <string_view>

#include "quotetracker/moment.h"
#include "quotetracker/quote.h"

namespace mirelo::quotetracker {

// Where quotes come from: a market that is made up as it is looked at, or the replay of a file. Used on one
// thread.
class QuoteSource {
 public:
  virtual ~QuoteSource() = default;

  // The market's present moment.
  virtual Moment Now() = 0;

  // The quote of a ticker as of now. The reference holds until the next call of any member.
  virtual const Quote& Look(std::string_view ticker) = 0;
};

}  // namespace mirelo::quotetracker
