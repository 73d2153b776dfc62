#pragma once

#include <cstddef>
#include <istream>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "quotetracker/quote_source.h"

namespace mirelo::quotetracker {

// Quotes from a file of comma-separated lines. The first line names the columns (ReplayColumns::Names), in
// any order and without regard to case. Ticker, Date (mm/dd/yyyy) and Time (hh:mm:ss) must be there; a column
// left out, or an empty field, is 0. Without the column LastVolume it is what Volume rose by since the
// ticker's line before. Every further line is one quote; times must not go backwards. Tick is U, D or S.
// Empty lines are passed over.
//
// The replay begins at the first quote's time when it is made, and its clock then runs `speed` times as fast
// as the wall's. At its end the last quotes stay. A ticker without a quote so far has the present stamp and
// all numbers 0.
class Replay : public QuoteSource {
 public:
  // `wall` may be any clock that runs. Raises std::runtime_error with `name`, the line's number and what is
  // wrong with it: an unknown, missing or repeated column, a line of another number of fields, a field that
  // cannot be read, a time before that of the line above, no quote at all.
  Replay(std::istream& text, const std::string& name, double speed = 1, Clock wall = SystemClock());

  // The same from a file; also raises when it cannot be opened.
  static std::unique_ptr<Replay> FromFile(const std::string& path, double speed = 1,
                                          Clock wall = SystemClock());

  Moment Now() override;
  const Quote& Look(std::string_view ticker) override;
  std::unique_ptr<QuoteUpdates> Subscribe(const std::vector<std::string>& tickers) override;

 private:
  class Updates;

  // The number of lines whose time has come.
  std::size_t Due();
  const Quote& Unknown(std::string_view ticker);

  struct Line {
    Moment moment;
    Quote quote;
  };

  std::vector<Line> lines_;
  double speed_;
  Clock wall_;
  Moment began_;  // on the wall
  std::size_t due_ = 0;
  std::map<std::string, std::size_t, std::less<>> current_;  // upper-case ticker: its latest line that is due
  Quote unknown_;
};

}  // namespace mirelo::quotetracker
