#include "app/quote_board.h"

#include <array>

#include "automation/number.h"
#include "automation/text.h"

namespace mirelo::app {

namespace {

std::string Shown(double value) { return value == 0 ? std::string() : NumberText(value); }
std::string Shown(std::int32_t value) { return value == 0 ? std::string() : NumberText(value); }
std::string Shown(const std::string& value) { return value; }

struct Column {
  const char* name;
  std::string (*text)(const cQTData&);
};

constexpr std::array<Column, 15> kColumns{{
    {"Ticker", [](const cQTData& quote) { return quote.Symbol(); }},
    {"Last", [](const cQTData& quote) { return Shown(quote.Last_Price()); }},
    {"Change", [](const cQTData& quote) { return Shown(quote.Change()); }},
    {"Bid", [](const cQTData& quote) { return Shown(quote.Bid_Price()); }},
    {"Ask", [](const cQTData& quote) { return Shown(quote.Ask_Price()); }},
    {"BidSize", [](const cQTData& quote) { return Shown(quote.Bid_Size()); }},
    {"AskSize", [](const cQTData& quote) { return Shown(quote.Ask_Size()); }},
    {"Volume", [](const cQTData& quote) { return Shown(quote.Volume()); }},
    {"LastVolume", [](const cQTData& quote) { return Shown(quote.Last_Volume()); }},
    {"High", [](const cQTData& quote) { return Shown(quote.High()); }},
    {"Low", [](const cQTData& quote) { return Shown(quote.Low()); }},
    {"Open", [](const cQTData& quote) { return Shown(quote.OpenTicker()); }},
    {"NumTrades", [](const cQTData& quote) { return Shown(quote.Trades()); }},
    {"Date", [](const cQTData& quote) { return Shown(quote.DateQT()); }},
    {"Time", [](const cQTData& quote) { return Shown(quote.TimeQT()); }},
}};

}  // namespace

const std::vector<std::string>& QuoteBoard::Columns() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> all;
    for (const auto& column : kColumns) all.emplace_back(column.name);
    return all;
  }();
  return names;
}

QuoteBoard::QuoteBoard(const std::vector<std::string>& tickers) {
  for (const auto& ticker : tickers) RowOf(ticker);
}

void QuoteBoard::Take(const cQTData& quote) {
  ++quote_count_;
  auto& row = RowOf(quote.Symbol());
  for (std::size_t c = 1; c < kColumns.size(); ++c) {
    if (auto text = kColumns[c].text(quote); !text.empty()) row[c] = std::move(text);
  }
}

std::vector<std::vector<std::string>> QuoteBoard::Rows() const { return rows_; }

std::vector<std::string>& QuoteBoard::RowOf(const std::string& ticker) {
  const auto [place, added] = places_.try_emplace(UCase(ticker), rows_.size());
  if (added) {
    rows_.emplace_back(kColumns.size());
    rows_.back().front() = ticker;
  }
  return rows_[place->second];
}

std::vector<std::string> QuoteFields(const cQTData& quote) {
  std::vector<std::string> fields;
  for (const auto& column : kColumns) fields.push_back(column.text(quote));
  return fields;
}

}  // namespace mirelo::app
