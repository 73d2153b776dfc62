#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/cQTData.h"
#include "snapshot/column_row.h"

namespace mirelo {

// The columns of which the whole system speaks, one row each; a row that is incomplete does not compile. A
// column that only streams bring is the last row. One that replies bring as well stands where its field does
// in their lines, and is counted in kReplyFields.

// The columns that some rule is about, by their codes. A column's code is the index of its field in a line of
// QuoteTracker's reply to a quote request, counted from 0.
enum class Column : std::int16_t {
  Ticker = 0,
  Date = 1,
  Time = 2,
  Tick = 7,
  Volume = 8,       // cumulative volume of the day
  LastVolume = 13,  // volume since the call before, worked out here; what the reply has there is not used
};

// In the order of the codes.
inline constexpr std::array kColumnVocabulary{
    ColumnRow("Ticker", "TICKER", ListRight(1), ColumnKind::Ticker,
              StreamedField(QuoteField::Symbol, &cQTData::Symbol), 1, MakesRow::Never, kInHistories,
              "the ticker, as you named it"),
    ColumnRow("Date", "DATE", ListRight(6), ColumnKind::Date,
              StreamedField(QuoteField::Date_Time, &cQTData::DateQT), 18, MakesRow::Never, kInHistories,
              "the day on which the quote came, in your zone"),
    ColumnRow("Time", "TIME", ListRight(7), ColumnKind::Time,
              StreamedField(QuoteField::Date_Time, &cQTData::TimeQT), 19, MakesRow::Never, kInHistories,
              "the time at which the quote came, in your zone"),
    ColumnRow("Last", "LAST", ListRight(2), ColumnKind::Price,
              StreamedField(QuoteField::Last_Price, &cQTData::Last_Price), 2, MakesRow::WhenOther,
              kInHistories, "the price of the last trade"),
    ColumnRow("Bid", "BID", ListRight(4), ColumnKind::Price,
              StreamedField(QuoteField::Bid_Price, &cQTData::Bid_Price), 4, MakesRow::WhenOther, kInHistories,
              "the highest price that is bid"),
    ColumnRow("Ask", "ASK", ListRight(5), ColumnKind::Price,
              StreamedField(QuoteField::Ask_Price, &cQTData::Ask_Price), 5, MakesRow::WhenOther, kInHistories,
              "the lowest price that is asked"),
    ColumnRow("Change", "CHANGE", ListRight(3), ColumnKind::Change,
              StreamedField(QuoteField::Change, &cQTData::Change), 3, MakesRow::WhenOther, kInHistories,
              "how far the price is from the last close; green above 0, red below"),
    ColumnRow("Tick", "TICK", kListLeft, ColumnKind::Mark, kDropped, 15, MakesRow::WhenOther, kNotInHistories,
              "which way the price went; a stream does not bring it"),
    ColumnRow("Volume", "VOLUME", kListLeft, ColumnKind::Count,
              StreamedField(QuoteField::Volume, &cQTData::Volume), 8, MakesRow::WhenOther, kInHistories,
              "how many were traded since the day began"),
    ColumnRow("High", "HIGH", kListLeft, ColumnKind::Price, StreamedField(QuoteField::High, &cQTData::High),
              10, MakesRow::WhenOther, kInHistories, "the highest price of the day"),
    ColumnRow("Low", "LOW", kListLeft, ColumnKind::Price, StreamedField(QuoteField::Low, &cQTData::Low), 11,
              MakesRow::WhenOther, kInHistories, "the lowest price of the day"),
    ColumnRow("BidSize", "BIDSIZE", kListLeft, ColumnKind::Count,
              StreamedField(QuoteField::Bid_Size, &cQTData::Bid_Size), 6, MakesRow::WhenOther, kInHistories,
              "how many the highest bid is for"),
    ColumnRow("AskSize", "ASKSIZE", kListLeft, ColumnKind::Count,
              StreamedField(QuoteField::Ask_Size, &cQTData::Ask_Size), 7, MakesRow::WhenOther, kInHistories,
              "how many the lowest price is asked for"),
    ColumnRow("LastVolume", "LASTVOLUME", kListLeft, ColumnKind::Count,
              StreamedField(QuoteField::Volume, &cQTData::Last_Volume), 9, MakesRow::WhenNotZero,
              kInHistories, "how many were traded since the quote before"),
    ColumnRow("AvgTrade", "AVGTRADE", kListLeft, ColumnKind::Count,
              StreamedField(QuoteField::Avg_Trade_Size, &cQTData::Avg_Trade_Size), 16, MakesRow::WhenOther,
              kInHistories, "how many a trade of the day was for on average"),
    ColumnRow("NumTrades", "NUMTRADES", kListLeft, ColumnKind::Count,
              StreamedField(QuoteField::Trades, &cQTData::Trades), 17, MakesRow::WhenOther, kInHistories,
              "how many trades the day had"),
    ColumnRow("Open", "OPEN", kListLeft, ColumnKind::Price,
              StreamedField(QuoteField::OpenTicker, &cQTData::OpenTicker), 12, MakesRow::WhenOther,
              kInHistories, "the first price of the day"),
    ColumnRow("52w Low", "52W LOW", kListLeft, ColumnKind::Price,
              StreamedField(QuoteField::Week_52_Low, &cQTData::Week_52_Low), 14, MakesRow::WhenOther,
              kNotInHistories, "the lowest price of 52 weeks"),
    ColumnRow("52w High", "52W HIGH", kListLeft, ColumnKind::Price,
              StreamedField(QuoteField::Week_52_High, &cQTData::Week_52_High), 13, MakesRow::WhenOther,
              kNotInHistories, "the highest price of 52 weeks"),
};

// How many columns stand in QuoteTracker's replies: the first ones. Those behind them come over a stream
// alone.
inline constexpr std::size_t kReplyFields = 19;

inline constexpr std::int16_t kUnknownColumn = -1;

constexpr std::int16_t CodeOf(Column column) { return static_cast<std::int16_t>(column); }
constexpr const ColumnRow& RowOfColumn(Column column) {
  return kColumnVocabulary[static_cast<std::size_t>(CodeOf(column))];
}
static_assert(RowOfColumn(Column::Ticker).name == "Ticker" && RowOfColumn(Column::Date).name == "Date" &&
              RowOfColumn(Column::Time).name == "Time" && RowOfColumn(Column::Tick).name == "Tick" &&
              RowOfColumn(Column::Volume).name == "Volume" &&
              RowOfColumn(Column::LastVolume).name == "LastVolume");

// The column with this upper-case form; null for any other text, blanks around a name included.
constexpr const ColumnRow* FindColumn(std::string_view upper_case) {
  for (const ColumnRow& row : kColumnVocabulary) {
    if (row.upper_case == upper_case) return &row;
  }
  return nullptr;
}

// The code of the column with this upper-case form; kUnknownColumn where the reply has none.
constexpr std::int16_t ColumnCode(std::string_view upper_case) {
  const ColumnRow* const row = FindColumn(upper_case);
  if (row == nullptr) return kUnknownColumn;
  const auto code = row - kColumnVocabulary.data();
  return code < static_cast<std::ptrdiff_t>(kReplyFields) ? static_cast<std::int16_t>(code) : kUnknownColumn;
}

}  // namespace mirelo
