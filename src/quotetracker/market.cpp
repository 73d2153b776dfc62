#include "quotetracker/market.h"

#include <utility>

namespace mirelo::quotetracker {

Market::Market(std::uint64_t seed, Clock clock) : seed_(seed), clock_(std::move(clock)) {}

Moment Market::Now() { return clock_(); }

const Quote& Market::Look(std::string_view ticker) {
  const Moment now = clock_();
  Walk& walk = WalkOf(ticker);
  walk.Step(now);
  return walk.Current();
}

Walk& Market::WalkOf(std::string_view ticker) {
  key_.assign(ticker);
  for (char& c : key_) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  const auto known = walks_.find(key_);
  if (known != walks_.end()) return known->second;

  // The empty ticker stands for all that is not remembered.
  const bool full = walks_.size() >= kMostTickers;
  return walks_.insert_or_assign(full ? std::string() : key_, Walk(seed_, key_, clock_())).first->second;
}

}  // namespace mirelo::quotetracker
