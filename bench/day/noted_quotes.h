#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/excel/worksheet.h"
#include "quotetracker/market.h"
#include "quotetracker/quote_source.h"

namespace mirelo {

// When each quote was sent. A quote is told by its volume, which is its number, counted from 1.
class Sendings {
 public:
  using Clock = std::chrono::steady_clock;

  void Note(std::int64_t number) {
    times_[static_cast<std::size_t>(number) % times_.size()] = Clock::now().time_since_epoch().count();
    newest_ = number;
  }
  // Not so for the quote of a ticker that is told when it is subscribed to.
  bool Has(std::int64_t number) const { return number > 0 && number <= newest_; }
  std::chrono::nanoseconds AgeOf(std::int64_t number) const {
    return Clock::now().time_since_epoch() -
           Clock::duration(times_[static_cast<std::size_t>(number) % times_.size()]);
  }

 private:
  std::array<std::atomic<Clock::rep>, 65536> times_{};
  std::atomic<std::int64_t> newest_ = 0;
};

// Quotes of the tickers in turn, each noted when it is about to be sent.
class NotedQuotes : public quotetracker::QuoteSource {
 public:
  explicit NotedQuotes(Sendings& sendings) : sendings_(sendings) {}

  quotetracker::Moment Now() override { return market_.Now(); }
  const quotetracker::Quote& Look(std::string_view ticker) override { return market_.Look(ticker); }
  std::unique_ptr<quotetracker::QuoteUpdates> Subscribe(const std::vector<std::string>& tickers) override;

 private:
  class Updates;

  Sendings& sendings_;
  quotetracker::Market market_{1};
  std::int64_t number_ = 0;
};

// How old quotes are when they stand in the quote table, whose second column is the volume.
class CellAges {
 public:
  // Those of the first moments, so many, are left out.
  CellAges(const Sendings& sendings, std::size_t tickers, std::int64_t warm_up)
      : sendings_(sendings), seen_(tickers), warm_up_(warm_up) {}

  // What has come to the table since the last call has come now.
  void NoteIn(host::excel::Worksheet& table);

  const std::vector<std::chrono::nanoseconds>& All() const { return ages_; }

 private:
  const Sendings& sendings_;
  std::vector<std::int64_t> seen_;  // the number of the last quote, by tickers
  const std::int64_t warm_up_;
  std::vector<std::chrono::nanoseconds> ages_;
};

}  // namespace mirelo
