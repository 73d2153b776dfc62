#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "quotetracker/session_file.h"
#include "support/level1_wire.h"

namespace mirelo::testing {

// Quotes of some tickers in turn, more than one read takes. The n-th quote of a ticker, counted from 1, has
// the price n and the volume 100 n, so that each tells its place. Link mirelo_quotetracker.
class Burst {
 public:
  // `quotes` is a multiple of the tickers.
  Burst(std::vector<std::string> tickers, int quotes) : tickers_(std::move(tickers)), quotes_(quotes) {}

  const std::vector<std::string>& Tickers() const { return tickers_; }
  int Quotes() const { return quotes_; }
  int QuotesOfEach() const { return quotes_ / static_cast<int>(tickers_.size()); }

  // The quotes from one to before another, counted from 0.
  std::string Bytes(int from, int to) const {
    std::string bytes;
    const int tickers = static_cast<int>(tickers_.size());
    for (int i = from; i < to; ++i) {
      const int place = i / tickers + 1;
      bytes += Level1Wire()
                   .Symbol(tickers_[static_cast<std::size_t>(i % tickers)])
                   .Last(place)
                   .Volume(100 * place)
                   .Stamp("01202011093000")
                   .Bytes();
    }
    return bytes;
  }
  std::string Bytes() const { return Bytes(0, quotes_); }

  // Writes a session that a stand-in plays: the conversation up to the quotes, then so many of them each
  // millisecond. It does not end within an hour.
  void WriteSession(const std::string& path, int quotes_a_millisecond) const {
    std::vector<int> goes(static_cast<std::size_t>(quotes_ / quotes_a_millisecond), quotes_a_millisecond);
    goes.push_back(quotes_ % quotes_a_millisecond);
    WriteSession(path, goes, std::chrono::milliseconds(1));
  }
  // The same with so many quotes in each go, and a pause between two of them.
  void WriteSession(const std::string& path, const std::vector<int>& goes,
                    std::chrono::milliseconds pause) const {
    using std::chrono::milliseconds;
    quotetracker::SessionWriter session(path);
    session.Add(milliseconds(0), "OK<CONNECT>QuoteTracker</CONNECT><SERVERTIME>09:30</SERVERTIME>");
    session.Add(milliseconds(20), "LO<STATUSCODE>0</STATUSCODE>");
    session.Add(milliseconds(40), "OK<STREAMER>SWISS.SDF</STREAMER>");
    auto time = milliseconds(100);
    int from = 0;
    for (const int quotes : goes) {
      if (quotes > 0) session.Add(time, Bytes(from, from + quotes));
      from += quotes;
      time += pause;
    }
    session.Add(std::chrono::hours(1), "OK");
  }

 private:
  std::vector<std::string> tickers_;
  int quotes_;
};

// Counts what is wrong with the order in which a burst arrived.
class BurstArrival {
 public:
  explicit BurstArrival(const Burst& burst) : burst_(burst) {}

  void Take(const std::string& ticker, double price, double last_volume) {
    ++count_;
    int& place = places_[ticker];
    if (price != place + 1) ++displaced_;
    place = static_cast<int>(price);
    if (last_volume < 0) ++negative_;
  }

  int Count() const { return count_; }
  bool IsComplete() const { return count_ >= burst_.Quotes(); }
  // Quotes that came behind another than the one before them.
  int Displaced() const { return displaced_; }
  // Of last volumes.
  int Negative() const { return negative_; }
  // The place of the quote that came last, by ticker.
  const std::map<std::string, int>& Newest() const { return places_; }

 private:
  const Burst& burst_;
  int count_ = 0;
  int displaced_ = 0;
  int negative_ = 0;
  std::map<std::string, int> places_;
};

}  // namespace mirelo::testing
