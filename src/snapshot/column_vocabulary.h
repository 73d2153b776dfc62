#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace mirelo {

// The quote columns of which the whole system speaks. A column's code is the index of its field in a line of
// QuoteTracker's reply to a quote request, counted from 0.
enum class Column : std::int16_t {
  Ticker,
  Date,
  Time,
  Last,
  Bid,
  Ask,
  Change,
  Tick,
  Volume,  // cumulative volume of the day
  High,
  Low,
  BidSize,
  AskSize,
  LastVolume,  // volume since the call before, worked out here; what the reply has there is not used
  AvgTrade,
  NumTrades,
  Open,
  Low52w,
  High52w,
};

// The setting that lists a column unless the user has moved it.
enum class ColumnList { ListRight /* visible */, ListLeft /* available */ };

struct ColumnName {
  Column column;
  std::string_view name;        // in lists, headers and settings
  std::string_view upper_case;  // what names are compared with
  ColumnList listed;
};

// In the order of the codes.
inline constexpr std::array<ColumnName, 19> kColumnVocabulary{{
    {Column::Ticker, "Ticker", "TICKER", ColumnList::ListRight},
    {Column::Date, "Date", "DATE", ColumnList::ListRight},
    {Column::Time, "Time", "TIME", ColumnList::ListRight},
    {Column::Last, "Last", "LAST", ColumnList::ListRight},
    {Column::Bid, "Bid", "BID", ColumnList::ListRight},
    {Column::Ask, "Ask", "ASK", ColumnList::ListRight},
    {Column::Change, "Change", "CHANGE", ColumnList::ListRight},
    {Column::Tick, "Tick", "TICK", ColumnList::ListLeft},
    {Column::Volume, "Volume", "VOLUME", ColumnList::ListLeft},
    {Column::High, "High", "HIGH", ColumnList::ListLeft},
    {Column::Low, "Low", "LOW", ColumnList::ListLeft},
    {Column::BidSize, "BidSize", "BIDSIZE", ColumnList::ListLeft},
    {Column::AskSize, "AskSize", "ASKSIZE", ColumnList::ListLeft},
    {Column::LastVolume, "LastVolume", "LASTVOLUME", ColumnList::ListLeft},
    {Column::AvgTrade, "AvgTrade", "AVGTRADE", ColumnList::ListLeft},
    {Column::NumTrades, "NumTrades", "NUMTRADES", ColumnList::ListLeft},
    {Column::Open, "Open", "OPEN", ColumnList::ListLeft},
    {Column::Low52w, "52w Low", "52W LOW", ColumnList::ListLeft},
    {Column::High52w, "52w High", "52W HIGH", ColumnList::ListLeft},
}};

// What the settings ListRight, ListLeft and VerticalField are taken to hold while nothing is stored.
// ListRight is in the order of the columns on the sheet.
inline constexpr const char* kDefaultListRight = "Ticker,Last,Change,Bid,Ask,Date,Time";
inline constexpr const char* kDefaultListLeft =
    "Tick,Volume,High,Low,BidSize,AskSize,LastVolume,AvgTrade,NumTrades,Open,52w Low,52w High";
inline constexpr const char* kDefaultVerticalField = "Last";

inline constexpr std::int16_t kUnknownColumn = -1;

constexpr std::int16_t CodeOf(Column column) { return static_cast<std::int16_t>(column); }

// The code of the column with this upper-case form; kUnknownColumn for any other text, blanks around a name
// included.
constexpr std::int16_t ColumnCode(std::string_view upper_case) {
  for (const ColumnName& row : kColumnVocabulary) {
    if (row.upper_case == upper_case) return CodeOf(row.column);
  }
  return kUnknownColumn;
}

}  // namespace mirelo
