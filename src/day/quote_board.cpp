#include "day/quote_board.h"

#include <algorithm>
#include <cstdint>

#include "automation/text.h"
#include "snapshot/column_names.h"
#include "snapshot/column_vocabulary.h"

namespace mirelo::day {

namespace {

// Quotes that come one after the other share their dates, and most often their times.
void LetMoment(Reading reading, const std::string& text, QuoteValue& value) {
  if (value.kind() == QuoteValue::Kind::Moment && value.text() == text) return;
  value = ReadValue(reading, text);
}

// The properties have the low half of what was sent.
double VolumeOf(const cQTData& quote) { return static_cast<double>(quote.WholeVolumes().volume); }

// Below 0 where the volume begins anew within a day: as with the first quote of a day nothing is known of it.
double LastVolumeOf(const cQTData& quote) {
  return static_cast<double>(std::max<std::int64_t>(quote.WholeVolumes().last_volume, 0));
}

void Let(const cQTData& quote, const StreamedField& streamed, QuoteValue& value) {
  if (streamed.number != nullptr) return value.Set((quote.*streamed.number)());
  if (streamed.quantity == &cQTData::Volume) return value.Set(VolumeOf(quote));
  if (streamed.quantity == &cQTData::Last_Volume) return value.Set(LastVolumeOf(quote));
  if (streamed.quantity != nullptr) return value.Set((quote.*streamed.quantity)());
  LetMoment(streamed.text == &cQTData::TimeQT ? Reading::AsTime : Reading::AsMoment, (quote.*streamed.text)(),
            value);
}

}  // namespace

const std::vector<std::string>& QuoteBoard::AllColumns() {
  static const std::vector<std::string> names = Split(kColumnsForReading, ",");
  return names;
}

QuoteBoard::QuoteBoard(std::vector<std::string> columns, const std::vector<std::string>& tickers)
    : columns_(std::move(columns)) {
  for (std::size_t c = 1; c < columns_.size(); ++c) {
    const ColumnRow* const row = FindColumn(UCase(columns_[c]));
    if (row == nullptr || row->kind == ColumnKind::Ticker || row->streamed.IsNone()) continue;
    sources_.push_back({c, &row->streamed, row == &RowOfColumn(Column::LastVolume)});
  }
  for (const auto& ticker : tickers) AddRow(ticker);
}

std::size_t QuoteBoard::Take(const cQTData& quote) {
  ++quote_count_;
  const std::size_t place = RowOf(quote.Symbol());
  QuoteRow& row = rows_[place];
  for (const auto& [column, streamed, of_newest] : sources_) {
    if (of_newest || quote.Carries(streamed->field)) Let(quote, *streamed, row[column]);
  }
  return place;
}

bool QuoteBoard::Shows(const cQTData& quote) const {
  return std::ranges::any_of(sources_, [&](const Source& source) {
    return source.of_newest || quote.Carries(source.streamed->field);
  });
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
  QuoteRow fields(kColumnVocabulary.size());
  LetQuoteFields(quote, fields);
  return fields;
}

void LetQuoteFields(const cQTData& quote, QuoteRow& fields) {
  for (const ColumnRow& row : kColumnVocabulary) {
    QuoteValue& value = fields[static_cast<std::size_t>(row.reading) - 1];
    if (row.streamed.IsNone() || !quote.Carries(row.streamed.field)) {
      value = {};
    } else if (row.kind == ColumnKind::Ticker) {
      value = QuoteValue::Text(quote.Symbol());
    } else {
      Let(quote, row.streamed, value);
    }
  }
}

}  // namespace mirelo::day
