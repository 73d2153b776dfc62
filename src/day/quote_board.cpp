#include "day/quote_board.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "automation/number.h"
#include "automation/text.h"

namespace mirelo::day {

namespace {

std::string Shown(double value) { return NumberText(value); }
std::string Shown(std::int32_t value) { return NumberText(value); }
std::string Shown(const std::string& value) { return value; }

// A column, and the field that brings it. Date and Time are the moment at which a record with a stamp
// arrived. The volume of a trade is worked out of a record's volume. The tick is read and dropped, so no
// record brings it.
struct BoardColumn {
  const char* name;
  std::optional<QuoteField> field;
  std::string (*text)(const cQTData&);
};

constexpr std::array<BoardColumn, 19> kColumns{{
    {"Ticker", QuoteField::Symbol, [](const cQTData& quote) { return quote.Symbol(); }},
    {"Last", QuoteField::Last_Price, [](const cQTData& quote) { return Shown(quote.Last_Price()); }},
    {"Change", QuoteField::Change, [](const cQTData& quote) { return Shown(quote.Change()); }},
    {"Bid", QuoteField::Bid_Price, [](const cQTData& quote) { return Shown(quote.Bid_Price()); }},
    {"Ask", QuoteField::Ask_Price, [](const cQTData& quote) { return Shown(quote.Ask_Price()); }},
    {"BidSize", QuoteField::Bid_Size, [](const cQTData& quote) { return Shown(quote.Bid_Size()); }},
    {"AskSize", QuoteField::Ask_Size, [](const cQTData& quote) { return Shown(quote.Ask_Size()); }},
    {"Volume", QuoteField::Volume, [](const cQTData& quote) { return Shown(quote.Volume()); }},
    {"LastVolume", QuoteField::Volume, [](const cQTData& quote) { return Shown(quote.Last_Volume()); }},
    {"High", QuoteField::High, [](const cQTData& quote) { return Shown(quote.High()); }},
    {"Low", QuoteField::Low, [](const cQTData& quote) { return Shown(quote.Low()); }},
    {"Open", QuoteField::OpenTicker, [](const cQTData& quote) { return Shown(quote.OpenTicker()); }},
    {"52w High", QuoteField::Week_52_High, [](const cQTData& quote) { return Shown(quote.Week_52_High()); }},
    {"52w Low", QuoteField::Week_52_Low, [](const cQTData& quote) { return Shown(quote.Week_52_Low()); }},
    {"Tick", std::nullopt, [](const cQTData& quote) { return Shown(quote.Tick()); }},
    {"AvgTrade", QuoteField::Avg_Trade_Size,
     [](const cQTData& quote) { return Shown(quote.Avg_Trade_Size()); }},
    {"NumTrades", QuoteField::Trades, [](const cQTData& quote) { return Shown(quote.Trades()); }},
    {"Date", QuoteField::Date_Time, [](const cQTData& quote) { return Shown(quote.DateQT()); }},
    {"Time", QuoteField::Date_Time, [](const cQTData& quote) { return Shown(quote.TimeQT()); }},
}};

constexpr std::size_t kTicker = 0;
constexpr std::size_t kLastVolume = 8;
static_assert(std::string_view(kColumns[kLastVolume].name) == "LastVolume");

std::size_t FieldOf(const std::string& column) {
  const auto found =
      std::ranges::find_if(kColumns, [&](const BoardColumn& c) { return EqualText(c.name, column); });
  return static_cast<std::size_t>(found - kColumns.begin());
}

bool Brings(const cQTData& quote, const BoardColumn& column) {
  return column.field && quote.Carries(*column.field);
}

}  // namespace

const std::vector<std::string>& QuoteBoard::AllColumns() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> all;
    for (const auto& column : kColumns) all.emplace_back(column.name);
    return all;
  }();
  return names;
}

QuoteBoard::QuoteBoard(std::vector<std::string> columns, const std::vector<std::string>& tickers)
    : columns_(std::move(columns)) {
  for (const auto& column : columns_) fields_.push_back(FieldOf(column));
  for (const auto& ticker : tickers) RowOf(ticker);
}

std::size_t QuoteBoard::Take(const cQTData& quote) {
  ++quote_count_;
  const std::size_t place = RowOf(quote.Symbol());
  QuoteRow& row = rows_[place];
  for (std::size_t c = 0; c < fields_.size(); ++c) {
    const std::size_t field = fields_[c];
    if (field == kTicker || field == kColumns.size()) continue;
    if (field == kLastVolume) {
      row[c] = NumberText(quote.Last_Volume());
    } else if (Brings(quote, kColumns[field])) {
      row[c] = kColumns[field].text(quote);
    }
  }
  return place;
}

std::size_t QuoteBoard::RowOf(const std::string& ticker) {
  const auto [place, added] = places_.try_emplace(UCase(ticker), rows_.size());
  if (added) {
    QuoteRow& row = rows_.emplace_back(columns_.size());
    for (std::size_t c = 0; c < fields_.size(); ++c) {
      if (fields_[c] == kTicker) row[c] = ticker;
    }
  }
  return place->second;
}

QuoteRow QuoteFields(const cQTData& quote) {
  QuoteRow fields;
  for (const auto& column : kColumns) {
    fields.push_back(Brings(quote, column) ? column.text(quote) : std::string());
  }
  return fields;
}

}  // namespace mirelo::day
