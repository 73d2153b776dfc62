#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quotetracker/moment.h"
#include "quotetracker/price.h"

namespace mirelo::quotetracker {

// How the last price moved against the one before it.
enum class Tick : char { kUp = 'U', kDown = 'D', kSame = 'S' };

// What the market says of one ticker at one moment. A ticker that nobody trades has all numbers 0.
struct Quote {
  std::string ticker;
  Stamp stamp;
  Price last = 0;
  Price bid = 0;
  Price ask = 0;
  Price change = 0;  // of the last price against the previous close
  Tick tick = Tick::kSame;
  std::int64_t volume = 0;  // of the day so far, in shares
  Price high = 0;           // of the day
  Price low = 0;
  std::int32_t bid_size = 0;
  std::int32_t ask_size = 0;
  std::int32_t last_volume = 0;    // of the last trade; 0 when nothing was traded since the quote before
  std::int32_t average_trade = 0;  // shares a trade, over the day
  std::int32_t trades = 0;         // of the day
  Price open = 0;
  Price low_52 = 0;  // of the last 52 weeks, today included
  Price high_52 = 0;
  Price previous_close = 0;
  std::int64_t previous_volume = 0;  // of the day before
};

// Appends a quote as one record of a reply: the nineteen fields in the order of their codes, joined by
// commas, no line break behind it. They are the columns of replayed files (ReplayColumns::Names). The ticker
// is written as `shown`, the way it was asked for.
void AppendRecord(std::string& text, std::string_view shown, const Quote& quote);

}  // namespace mirelo::quotetracker
