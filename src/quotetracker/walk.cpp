#include "quotetracker/walk.h"

#include <algorithm>
#include <cmath>

namespace mirelo::quotetracker {
namespace {

// The first price lies between these, most tickers near the lower end.
constexpr double kCheapest = 4;
constexpr double kDearest = 400;
constexpr Price kLeastPrice = 10 * kCent;

// One step's move and the pull back to the previous close, as shares of that close: together they keep the
// price within some 1.3 per cent of it for two thirds of the time.
constexpr double kMove = 0.0004;
constexpr double kPull = 0.0005;

constexpr double kTradeChance = 0.8;
constexpr std::int64_t kRoundLot = 100;
constexpr int kStepsBeforeFirstLook = 40;

}  // namespace

Walk::Walk(std::uint64_t seed, std::string_view ticker, Moment moment)
    : random_(SeedFor(seed, ticker)), day_(std::chrono::floor<std::chrono::days>(moment)) {
  quote_.ticker = ticker;
  const double skew = random_.Unit();
  const double first = kCheapest + (kDearest - kCheapest) * skew * skew * skew;
  quote_.last = kCent * static_cast<Price>(first * 100);
  quote_.low_52 = kCent * static_cast<Price>(first * (55 + 40 * random_.Unit()));
  quote_.high_52 = kCent * static_cast<Price>(first * (105 + 60 * random_.Unit()));
  quote_.volume = kRoundLot * random_.Between(2'000, 80'000);
  middle_ = static_cast<double>(quote_.last);

  OpenDay(quote_.last + kCent * (random_.Between(-20, 20) * quote_.last / (20 * kPriceUnit)));
  quote_.volume = kRoundLot * random_.Between(500, 20'000);
  quote_.trades = static_cast<std::int32_t>(quote_.volume / (kRoundLot * random_.Between(2, 9)));
  for (int i = 0; i < kStepsBeforeFirstLook; ++i) Step(moment);
}

void Walk::Step(Moment moment) {
  const auto day = std::chrono::floor<std::chrono::days>(moment);
  if (day > day_) {
    day_ = day;
    OpenDay(quote_.last);
  }
  quote_.stamp = ToStamp(moment);
  Wander();
  QuoteSpread();
  if (random_.Unit() < kTradeChance) {
    Trade();
  } else {
    quote_.last_volume = 0;
  }
}

void Walk::OpenDay(Price open) {
  quote_.previous_close = quote_.last;
  quote_.previous_volume = quote_.volume;
  quote_.volume = 0;
  quote_.trades = 0;
  quote_.average_trade = 0;
  quote_.open = quote_.high = quote_.low = std::max(open, kLeastPrice);
  quote_.last = quote_.open;
  Reach(quote_.open);
}

void Walk::Wander() {
  const auto close = static_cast<double>(quote_.previous_close);
  middle_ += kPull * (close - middle_) + kMove * close * random_.Normal();
  middle_ = std::max(middle_, static_cast<double>(kLeastPrice));
}

void Walk::QuoteSpread() {
  const Price middle = MiddlePrice();
  quote_.bid = middle - kCent * random_.Between(0, 2);
  quote_.ask = middle + kCent * random_.Between(1, 3);
  quote_.bid_size = static_cast<std::int32_t>(random_.Between(1, 60));
  quote_.ask_size = static_cast<std::int32_t>(random_.Between(1, 60));
}

void Walk::Trade() {
  const Price price = quote_.bid + kCent * random_.Between(0, (quote_.ask - quote_.bid) / kCent);
  quote_.tick = price > quote_.last ? Tick::kUp : price < quote_.last ? Tick::kDown : Tick::kSame;
  Reach(price);

  const auto trades = static_cast<std::int32_t>(random_.Between(1, 4));
  quote_.last_volume = static_cast<std::int32_t>(kRoundLot * random_.Between(1, 12));
  quote_.volume += quote_.last_volume * static_cast<std::int64_t>(trades);
  quote_.trades += trades;
  quote_.average_trade = static_cast<std::int32_t>(quote_.volume / quote_.trades);
}

void Walk::Reach(Price price) {
  quote_.last = price;
  quote_.change = price - quote_.previous_close;
  quote_.high = std::max(quote_.high, price);
  quote_.low = std::min(quote_.low, price);
  quote_.high_52 = std::max(quote_.high_52, quote_.high);
  quote_.low_52 = std::min(quote_.low_52, quote_.low);
}

Price Walk::MiddlePrice() const { return kCent * std::lround(middle_ / static_cast<double>(kCent)); }

}  // namespace mirelo::quotetracker
