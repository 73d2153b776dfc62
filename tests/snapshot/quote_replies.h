#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "automation/text.h"
#include "snapshot/column_vocabulary.h"

namespace mirelo::testing {

// What QuoteTracker knows of one ticker; the other fields of its line read "MSFT-Bid".
struct KnownQuote {
  std::string volume = "1000";
  std::string date = "1/20/2011";
};

// A market that answers a request for last quotes as QuoteTracker does.
class QuoteReplies {
 public:
  // By ticker; those that are not here are as a KnownQuote starts.
  std::map<std::string, KnownQuote, std::less<>> quotes;

  // The line of one ticker.
  std::string Line(std::string_view ticker) const {
    const auto known = quotes.find(ticker);
    const KnownQuote quote = known == quotes.end() ? KnownQuote() : known->second;
    std::string line;
    for (std::size_t code = 0; code < kReplyFields; ++code) {
      if (code > 0) line += ',';
      switch (static_cast<Column>(code)) {
        case Column::Ticker:
          line += ticker;
          break;
        case Column::Date:
          line += quote.date;
          break;
        case Column::Volume:
          line += quote.volume;
          break;
        default:
          line += std::string(ticker) + "-" + std::string(kColumnVocabulary[code].name);
      }
    }
    return line;
  }

  // The reply to a resource: its status and a line for each ticker, without a line end behind the last.
  std::string Reply(std::string_view resource) const {
    std::string reply = "OK";
    for (const std::string& ticker : TickersOf(resource)) reply += "\r\n" + Line(ticker);
    return reply;
  }

  static std::vector<std::string> TickersOf(std::string_view resource) {
    const auto first = resource.find('(') + 1;
    return Split(resource.substr(first, resource.rfind(')') - first), ",");
  }
};

}  // namespace mirelo::testing
