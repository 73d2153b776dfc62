#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/cQTData.h"
#include "core/property.h"

namespace mirelo {

// The columns of which the whole system speaks, one row each. A new column is a new row, behind the others;
// one that is incomplete does not compile.

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

// What a column holds, which says how texts are read and cells are formatted.
enum class ColumnKind : std::uint8_t { Ticker, Date, Time, Price, Change, Count, Mark };

// Where a column stands unless the user has moved it: the setting that lists it, and its place in ListRight,
// which is in the order of the columns on the sheet.
struct ColumnPlace {
  int right = 0;  // from 1; 0 in ListLeft, which is in the order of the codes
};
constexpr ColumnPlace ListRight(int place) { return {place}; }
inline constexpr ColumnPlace kListLeft{};

// When a quote that was asked for counts as a new one, and so gets a row of the history: by its value in this
// column, compared with the quote before.
enum class MakesRow : std::uint8_t {
  Never,        // the value says who is quoted, or when it was asked
  WhenOther,    // when it differs
  WhenNotZero,  // the value itself is a difference to the quote before
};

// Which property of a streamed quote a column shows, and the field of the record that brings it.
struct StreamedField {
  constexpr StreamedField() = default;  // none
  constexpr StreamedField(QuoteField carried, Property<double> cQTData::*shown)
      : field(carried), number(shown) {}
  constexpr StreamedField(QuoteField carried, Property<std::int32_t> cQTData::*shown)
      : field(carried), quantity(shown) {}
  constexpr StreamedField(QuoteField carried, Property<std::string> cQTData::*shown)
      : field(carried), text(shown) {}

  constexpr bool IsNone() const { return number == nullptr && quantity == nullptr && text == nullptr; }

  QuoteField field{};
  // One of these.
  Property<double> cQTData::*number = nullptr;
  Property<std::int32_t> cQTData::*quantity = nullptr;
  Property<std::string> cQTData::*text = nullptr;
};
// The wire has the field, but it is read and dropped.
inline constexpr StreamedField kDropped{};

// Whether a vertical table can show a column.
enum InHistories : bool { kNotInHistories, kInHistories };

struct ColumnRow {
  std::string_view name;        // in lists, headers and settings
  std::string_view upper_case;  // what names are compared with
  ColumnPlace place;
  ColumnKind kind;
  StreamedField streamed;
  int reading;  // its place, from 1, where all columns of a stream are printed in an order for reading
  MakesRow makes_row;
  InHistories in_histories;
  std::string_view meaning;

  constexpr ColumnRow(std::string_view its_name, std::string_view its_upper_case, ColumnPlace its_place,
                      ColumnKind its_kind, StreamedField its_field, int its_reading, MakesRow makes,
                      InHistories histories, std::string_view its_meaning)
      : name(its_name),
        upper_case(its_upper_case),
        place(its_place),
        kind(its_kind),
        streamed(its_field),
        reading(its_reading),
        makes_row(makes),
        in_histories(histories),
        meaning(its_meaning) {
    if (name.empty() || meaning.empty()) throw "a column has a name and a meaning";
    if (name.size() != upper_case.size()) throw "the upper-case form is that of the name";
    for (std::size_t i = 0; i < name.size(); ++i) {
      const char c = name[i];
      if (c == ',') throw "names are joined by commas";
      if (upper_case[i] != (c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c))
        throw "the upper-case form is that of the name";
    }
    switch (kind) {
      case ColumnKind::Price:
      case ColumnKind::Change:
        if (streamed.number == nullptr) throw "a price is streamed as a double";
        break;
      case ColumnKind::Count:
        if (streamed.quantity == nullptr) throw "a count is streamed as an integer";
        break;
      case ColumnKind::Ticker:
      case ColumnKind::Date:
      case ColumnKind::Time:
        if (streamed.text == nullptr) throw "a text is streamed as one";
        break;
      case ColumnKind::Mark:
        break;
    }
  }
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

// Names joined by commas, made while compiling.
class ColumnNames {
 public:
  constexpr void Add(std::string_view name) {
    if (size_ > 0) text_[size_++] = ',';
    for (const char c : name) text_[size_++] = c;
  }
  constexpr const char* Text() const { return text_.data(); }

 private:
  std::array<char, 512> text_{};
  std::size_t size_ = 0;
};

// The columns whose `number` is 1, 2 and so on, in that order. A number that is missing, or is there twice,
// does not compile.
template <class Number>
constexpr ColumnNames InOrderOf(std::size_t count, Number number) {
  ColumnNames names;
  for (std::size_t wanted = 1; wanted <= count; ++wanted) {
    const ColumnRow* found = nullptr;
    for (const ColumnRow& row : kColumnVocabulary) {
      if (static_cast<std::size_t>(number(row)) != wanted) continue;
      if (found != nullptr) throw "two columns have the same place";
      found = &row;
    }
    if (found == nullptr) throw "no column has this place";
    names.Add(found->name);
  }
  return names;
}
template <class Chosen>
constexpr ColumnNames InOrderOfCodes(Chosen chosen) {
  ColumnNames names;
  for (const ColumnRow& row : kColumnVocabulary) {
    if (chosen(row)) names.Add(row.name);
  }
  return names;
}
constexpr std::size_t CountRight() {
  std::size_t count = 0;
  for (const ColumnRow& row : kColumnVocabulary) count += row.place.right > 0;
  return count;
}

inline constexpr ColumnNames kNamesRight =
    InOrderOf(CountRight(), [](const ColumnRow& row) { return row.place.right; });
inline constexpr ColumnNames kNamesLeft =
    InOrderOfCodes([](const ColumnRow& row) { return row.place.right == 0; });
inline constexpr ColumnNames kNamesForReading =
    InOrderOf(kColumnVocabulary.size(), [](const ColumnRow& row) { return row.reading; });
inline constexpr ColumnNames kNamesByCode = InOrderOfCodes([](const ColumnRow&) { return true; });

// What the settings ListRight, ListLeft and VerticalField are taken to hold while nothing is stored.
inline constexpr const char* kDefaultListRight = kNamesRight.Text();
inline constexpr const char* kDefaultListLeft = kNamesLeft.Text();
inline constexpr const char* kDefaultVerticalField = "Last";
// All columns, in the order of the codes and in one for reading.
inline constexpr const char* kAllColumns = kNamesByCode.Text();
inline constexpr const char* kColumnsForReading = kNamesForReading.Text();

}  // namespace mirelo
