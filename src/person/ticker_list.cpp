#include "person/ticker_list.h"

#include <utility>

#include "core/setting_checks.h"

namespace mirelo {

namespace {

constexpr std::string_view kBetweenTickers = ", \t\r\n";

}  // namespace

std::vector<std::string> SplitTickers(std::string_view text) {
  std::vector<std::string> tickers;
  for (;;) {
    const auto begin = text.find_first_not_of(kBetweenTickers);
    if (begin == text.npos) return tickers;
    text.remove_prefix(begin);
    const auto end = text.find_first_of(kBetweenTickers);
    tickers.emplace_back(text.substr(0, end));
    text.remove_prefix(tickers.back().size());
  }
}

std::vector<std::string> SplitTickers(const std::vector<std::string>& texts) {
  std::vector<std::string> tickers;
  for (const std::string& text : texts) {
    for (std::string& ticker : SplitTickers(text)) tickers.push_back(std::move(ticker));
  }
  return tickers;
}

bool IsTickerName(std::string_view ticker) {
  return !ticker.empty() && ticker.find(',') == ticker.npos && catalogue::AreTickers(ticker);
}

}  // namespace mirelo
