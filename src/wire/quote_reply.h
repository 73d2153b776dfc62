#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo::wire {

// What is wrong with QuoteTracker's record of one ticker.
struct QuoteFlaw {
  enum class Kind {
    NoQuote,        // there is none
    EmptyQuote,     // it is all zeros, or empty: what QuoteTracker sends for a ticker that it does not know
    MissingFields,  // it has fewer fields than there are columns
    NoVolume,       // its volume is empty
    BadVolume,      // its volume is no number
    HugeVolume,     // its volume is a number, but so great that differences of it are wrong
  };

  std::size_t ticker = 0;  // counted from 0, in the order in which tickers were asked for
  Kind kind = Kind::NoQuote;
  std::size_t fields = 0;  // how many it has, of MissingFields
  std::string volume;      // as it came, of BadVolume and HugeVolume

  friend bool operator==(const QuoteFlaw&, const QuoteFlaw&) = default;
};

struct MendedReply {
  std::string body;
  std::vector<QuoteFlaw> flaws;  // by ticker
};

// Brings the reply to a request for quotes into a form that the facade can follow to its end: a record for
// each ticker that was asked for, in their order, with all fields and a number as its volume. The facade
// gives up a whole reply at the first record that is otherwise, and goes by the order of records alone.
//
// A record is that of the ticker that it names. Those that name nobody who was asked for stand where they
// stand if there are as many as tickers; else nobody can know whose they are, and they are left out.
//
// Fields past the last column and records of nobody are left out; `leave_out`, if there is one, is called
// with each such record, and once with all that stands so far behind the records that it was not looked at. A
// reply in order, and one that is no success, stays as it is, but for line ends behind it. Both the body and
// the tickers are bytes of the ANSI code page, as they pass the port.
MendedReply Mend(std::string body, const std::vector<std::string>& tickers,
                 const std::function<void(std::string_view)>& leave_out = {});

}  // namespace mirelo::wire
