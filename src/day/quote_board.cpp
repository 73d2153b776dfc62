#include "day/quote_board.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "automation/text.h"

namespace mirelo::day {

namespace {

// A column, the field that brings it, and how it lets a value from a quote. Date and Time are the moment at
// which a record with a stamp arrived. The volume of a trade is worked out of a record's volume. The tick is
// read and dropped, so no record brings it.
struct BoardColumn {
  const char* name;
  std::optional<QuoteField> field;
  void (*let)(const cQTData&, QuoteValue&);
};

// Quotes that come one behind the other share their dates, and most often their times.
void LetMoment(const std::string& text, QuoteValue& value) {
  if (value.kind() == QuoteValue::Kind::Moment && value.text() == text) return;
  value = ReadValue(Reading::AsMoment, text);
}

constexpr std::array<BoardColumn, 19> kColumns{{
    {"Ticker", QuoteField::Symbol, [](const cQTData& q, QuoteValue& v) { v = QuoteValue::Text(q.Symbol()); }},
    {"Last", QuoteField::Last_Price, [](const cQTData& q, QuoteValue& v) { v.Set(q.Last_Price()); }},
    {"Change", QuoteField::Change, [](const cQTData& q, QuoteValue& v) { v.Set(q.Change()); }},
    {"Bid", QuoteField::Bid_Price, [](const cQTData& q, QuoteValue& v) { v.Set(q.Bid_Price()); }},
    {"Ask", QuoteField::Ask_Price, [](const cQTData& q, QuoteValue& v) { v.Set(q.Ask_Price()); }},
    {"BidSize", QuoteField::Bid_Size, [](const cQTData& q, QuoteValue& v) { v.Set(q.Bid_Size()); }},
    {"AskSize", QuoteField::Ask_Size, [](const cQTData& q, QuoteValue& v) { v.Set(q.Ask_Size()); }},
    {"Volume", QuoteField::Volume, [](const cQTData& q, QuoteValue& v) { v.Set(q.Volume()); }},
    {"LastVolume", QuoteField::Volume, [](const cQTData& q, QuoteValue& v) { v.Set(q.Last_Volume()); }},
    {"High", QuoteField::High, [](const cQTData& q, QuoteValue& v) { v.Set(q.High()); }},
    {"Low", QuoteField::Low, [](const cQTData& q, QuoteValue& v) { v.Set(q.Low()); }},
    {"Open", QuoteField::OpenTicker, [](const cQTData& q, QuoteValue& v) { v.Set(q.OpenTicker()); }},
    {"52w High", QuoteField::Week_52_High, [](const cQTData& q, QuoteValue& v) { v.Set(q.Week_52_High()); }},
    {"52w Low", QuoteField::Week_52_Low, [](const cQTData& q, QuoteValue& v) { v.Set(q.Week_52_Low()); }},
    {"Tick", std::nullopt, nullptr},
    {"AvgTrade", QuoteField::Avg_Trade_Size,
     [](const cQTData& q, QuoteValue& v) { v.Set(q.Avg_Trade_Size()); }},
    {"NumTrades", QuoteField::Trades, [](const cQTData& q, QuoteValue& v) { v.Set(q.Trades()); }},
    {"Date", QuoteField::Date_Time, [](const cQTData& q, QuoteValue& v) { LetMoment(q.DateQT(), v); }},
    {"Time", QuoteField::Date_Time, [](const cQTData& q, QuoteValue& v) { LetMoment(q.TimeQT(), v); }},
}};

constexpr std::size_t kLastVolume = 8;
static_assert(std::string_view(kColumns[kLastVolume].name) == "LastVolume");

std::size_t FieldOf(const std::string& column) {
  const auto found =
      std::ranges::find_if(kColumns, [&](const BoardColumn& c) { return EqualText(c.name, column); });
  return static_cast<std::size_t>(found - kColumns.begin());
}

}  // namespace

const std::vector<std::string>& QuoteBoard::AllColumns() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> all;
    all.reserve(kColumns.size());
    for (const auto& column : kColumns) all.emplace_back(column.name);
    return all;
  }();
  return names;
}

QuoteBoard::QuoteBoard(std::vector<std::string> columns, const std::vector<std::string>& tickers)
    : columns_(std::move(columns)) {
  for (std::size_t c = 1; c < columns_.size(); ++c) {
    const std::size_t field = FieldOf(columns_[c]);
    if (field < kColumns.size() && kColumns[field].field) sources_.push_back({c, field});
  }
  for (const auto& ticker : tickers) AddRow(ticker);
}

std::size_t QuoteBoard::Take(const cQTData& quote) {
  ++quote_count_;
  const std::size_t place = RowOf(quote.Symbol());
  QuoteRow& row = rows_[place];
  for (const auto& [column, field] : sources_) {
    if (field == kLastVolume || quote.Carries(*kColumns[field].field))
      kColumns[field].let(quote, row[column]);
  }
  return place;
}

// Most symbols come in capital letters.
std::size_t QuoteBoard::RowOf(const std::string& ticker) {
  if (const auto place = places_.find(ticker); place != places_.end()) return place->second;
  const auto place = places_.find(UCase(ticker));
  if (place != places_.end()) return place->second;
  AddRow(ticker);
  return rows_.size() - 1;
}

void QuoteBoard::AddRow(const std::string& ticker) {
  places_.try_emplace(UCase(ticker), rows_.size());
  QuoteRow& row = rows_.emplace_back(columns_.size());
  if (!row.empty()) row.front() = QuoteValue::Text(ticker);
}

QuoteRow QuoteFields(const cQTData& quote) {
  QuoteRow fields(kColumns.size());
  for (std::size_t c = 0; c < kColumns.size(); ++c) {
    const auto& [name, field, let] = kColumns[c];
    if (field && quote.Carries(*field)) let(quote, fields[c]);
  }
  return fields;
}

}  // namespace mirelo::day
