#include "streaming/quote_changes.h"

#include <cstdint>

#include "core/cQTData.h"
#include "core/property.h"

namespace mirelo {

namespace {

// Calls `visit` with each compared field: the new value, whether such a value counts at all, and the stored
// one. Prices count above 0, a change of price unless it is 0, quantities from 1 on; others where they are
// `carried`.
//
// The tick would be compared between change and volume, but the decoder leaves it empty.
template <class State, class Visit>
inline void ForEachComparedField(const Level1Record& record, CarriedFields carried, State& state,
                                 Visit&& visit) {
  const auto compare = [&](QuoteField field, auto value, bool counts, auto& stored) {
    visit(value,
          static_cast<bool>(static_cast<unsigned>(counts) |
                            (static_cast<unsigned>(carried.Has(field)) & static_cast<unsigned>(value <= 0))),
          stored);
  };
  const auto price = [&](QuoteField field, double value, auto& stored) {
    compare(field, value, value > 0, stored);
  };
  const auto quantity = [&](QuoteField field, std::int32_t value, auto& stored) {
    compare(field, value, value >= 1, stored);
  };

  price(QuoteField::Last_Price, record.last_price, state.Last_Price);
  price(QuoteField::Bid_Price, record.bid_price, state.Bid_Price);
  price(QuoteField::Ask_Price, record.ask_price, state.Ask_Price);
  compare(QuoteField::Change, record.change, record.change != 0, state.Change);
  quantity(QuoteField::Volume, record.volume.low, state.Volume);
  price(QuoteField::High, record.high, state.High);
  price(QuoteField::Low, record.low, state.Low);
  quantity(QuoteField::Bid_Size, record.bid_size, state.Bid_Size);
  quantity(QuoteField::Ask_Size, record.ask_size, state.Ask_Size);
  // The low once more, where one expects the last size: a new last size alone is no change.
  price(QuoteField::Low, record.low, state.Low);
  quantity(QuoteField::Avg_Trade_Size, record.average_trade_size, state.Avg_Trade_Size);
  price(QuoteField::OpenTicker, record.open, state.OpenTicker);
  quantity(QuoteField::Trades, record.trades, state.Trades);
  price(QuoteField::Week_52_High, record.week_52_high, state.Week52High);
  price(QuoteField::Week_52_Low, record.week_52_low, state.Week52Low);
}

// Without branches: which fields a record carries is as good as chance, so a branch for each would be guessed
// wrong half the time.
bool HoldsChange(const Level1Record& record, CarriedFields carried, const cTickerDateTime& state) {
  bool changed = false;
  ForEachComparedField(record, carried, state, [&](auto value, bool counts, const auto& stored) {
    changed |= static_cast<bool>(static_cast<unsigned>(counts) & static_cast<unsigned>(value != stored()));
  });
  return changed;
}

}  // namespace

bool TakeChanges(const Level1Record& record, cTickerDateTime& state, bool count_zeros) {
  const CarriedFields carried = count_zeros ? record.carried : CarriedFields();
  if (!HoldsChange(record, carried, state)) return false;
  ForEachComparedField(record, carried, state,
                       [](auto value, bool counts, auto& stored) { stored(counts ? value : stored()); });
  return true;
}

bool CarriesCompared(const Level1Record& record) {
  bool carries = false;
  const cTickerDateTime nothing;
  ForEachComparedField(record, record.carried, nothing,
                       [&](auto, bool counts, const auto&) { carries |= counts; });
  return carries;
}

}  // namespace mirelo
