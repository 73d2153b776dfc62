#pragma once

#include <utility>

#include "core/cTickerDateTimes.h"
#include "streaming/MD5.h"
#include "streaming/arrival_clock.h"
#include "streaming/cQTStreaming.h"
#include "streaming/quote_keys.h"
#include "streaming/stamp_texts.h"
#include "streaming/symbol_index.h"

namespace mirelo {

// What a stream works with that its clients need not see, nor be compiled with.
struct cQTStreaming::Internals {
  explicit Internals(ArrivalClock clock) : arrival(std::move(clock)) {}

  cTickerDateTimes TickerStates;  // the last known state per symbol
  SymbolIndex symbol_index;       // into TickerStates
  QuoteKeys QuoteCounter;
  StampTexts stamps;
  ArrivalClock arrival;
  MD5 Hasher;
};

}  // namespace mirelo
