#include "streaming/quote_changes.h"

#include <cstdint>

#include "core/property.h"

namespace mirelo {

namespace {

// Calls `visit` with each compared field: the new value, whether such a value counts at all, and the stored
// one. Prices count above 0, a change of price unless it is 0, quantities from 1 on.
//
// The tick would be compared between change and volume, but the decoder leaves it empty.
template <class State, class Visit>
inline void ForEachComparedField(const Level1Record& record, State& state, Visit&& visit) {
  const auto price = [&](double value, auto& stored) { visit(value, value > 0, stored); };
  const auto quantity = [&](std::int32_t value, auto& stored) { visit(value, value >= 1, stored); };

  price(record.last_price, state.Last_Price);
  price(record.bid_price, state.Bid_Price);
  price(record.ask_price, state.Ask_Price);
  visit(record.change, record.change != 0, state.Change);
  quantity(record.volume, state.Volume);
  price(record.high, state.High);
  price(record.low, state.Low);
  quantity(record.bid_size, state.Bid_Size);
  quantity(record.ask_size, state.Ask_Size);
  // The low once more, where one expects the last size: a new last size alone is no change.
  price(record.low, state.Low);
  quantity(record.average_trade_size, state.Avg_Trade_Size);
  price(record.open, state.OpenTicker);
  quantity(record.trades, state.Trades);
  price(record.week_52_high, state.Week52High);
  price(record.week_52_low, state.Week52Low);
}

// Without branches: which fields a record carries is as good as chance, so a branch for each would be guessed
// wrong half the time.
bool HoldsChange(const Level1Record& record, const cTickerDateTime& state) {
  bool changed = false;
  ForEachComparedField(record, state, [&](auto value, bool counts, const auto& stored) {
    changed |= static_cast<bool>(static_cast<unsigned>(counts) & static_cast<unsigned>(value != stored()));
  });
  return changed;
}

}  // namespace

bool TakeChanges(const Level1Record& record, cTickerDateTime& state) {
  if (!HoldsChange(record, state)) return false;
  ForEachComparedField(record, state,
                       [](auto value, bool counts, auto& stored) { stored(counts ? value : stored()); });
  return true;
}

}  // namespace mirelo
