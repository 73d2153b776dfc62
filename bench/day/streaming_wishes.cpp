#include "day/streaming_wishes.h"

#include <utility>

namespace mirelo {

DialogWishes StreamingWishes(std::vector<std::string> tickers, const std::vector<std::string>& fields) {
  DialogWishes wishes;
  wishes.tickers = std::move(tickers);
  wishes.columns = {"Ticker", "Volume", "Last", "Change", "Bid", "Ask", "LastVolume", "Date", "Time"};
  wishes.settings = {{"UpdateEvery", "1"},
                     {"Seconds", "0"},
                     {"ComQuoteSource", "Alpstein Finance (delayed)"},
                     {"VerticalTable", "1"}};
  for (const std::string& ticker : wishes.tickers) {
    for (const std::string& field : fields) wishes.ticks.push_back({ticker, field});
  }
  return wishes;
}

}  // namespace mirelo
