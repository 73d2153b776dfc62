#include "day/snapshot_feed.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "automation/ansi.h"
#include "automation/text.h"
#include "automation/visible_text.h"
#include "core/cMirelo.h"
#include "day/quote_trail.h"
#include "day/unknown_ticker.h"
#include "snapshot/column_vocabulary.h"
#include "snapshot/tickers_per_request.h"
#include "wire/mended_replies.h"

namespace mirelo::day {

namespace {

using Kind = wire::QuoteFlaw::Kind;

constexpr std::size_t kFields = kReplyFields;
// A record of fewer has no more than its ticker, date and time.
constexpr std::size_t kFieldsOfNoMarket = static_cast<std::size_t>(Column::Time) + 2;
constexpr std::size_t kVolumeFields = static_cast<std::size_t>(Column::Volume) + 1;

// Second indexes of the facade's table of volumes.
constexpr std::int32_t kVolumeAndDate[] = {1, 2};

// Of tickers, and of a text, in what a person is told.
constexpr std::size_t kMostNames = 5;
constexpr std::int32_t kMostCharacters = 20;

bool IsNoQuote(const wire::QuoteFlaw& flaw) {
  return flaw.kind == Kind::NoQuote || flaw.kind == Kind::EmptyQuote;
}

// Whether a record that breaks off does so before it says anything of the market.
bool SaysNothing(const wire::QuoteFlaw& flaw) {
  return IsNoQuote(flaw) || (flaw.kind == Kind::MissingFields && flaw.fields < kFieldsOfNoMarket);
}

bool LacksVolume(const wire::QuoteFlaw& flaw) {
  return flaw.kind != Kind::MissingFields || flaw.fields < kVolumeFields;
}

bool IsOfVolume(std::int16_t code) {
  return code == CodeOf(Column::Volume) || code == CodeOf(Column::LastVolume);
}

// Whether a record breaks off before the value of a column, of those that are taken from it as they came.
bool Lacks(const wire::QuoteFlaw& flaw, std::int16_t code) {
  const bool is_made_here = code == CodeOf(Column::Date) || code == CodeOf(Column::Time);
  if (code == kUnknownColumn || is_made_here || code == CodeOf(Column::LastVolume)) return false;
  return flaw.kind == Kind::MissingFields && static_cast<std::size_t>(code) >= flaw.fields;
}

std::int32_t TableRow(std::size_t place) { return static_cast<std::int32_t>(place) + 1; }

// "MSFT, IBM and 3 more".
std::string Listed(const std::vector<std::string>& names) {
  const std::size_t shown = std::min(names.size(), kMostNames);
  std::string list = Join({names.begin(), names.begin() + static_cast<std::ptrdiff_t>(shown)}, ", ");
  if (shown < names.size()) list += " and " + std::to_string(names.size() - shown) + " more";
  return list;
}

std::string Quoted(const std::string& text) {
  const std::string shown = Visible(text);
  if (Len(shown) <= kMostCharacters) return '"' + shown + '"';
  return '"' + std::string(Left(shown, kMostCharacters - 1)) + "…\"";
}

std::string WhatIsWrong(const wire::QuoteFlaw& flaw) {
  switch (flaw.kind) {
    case Kind::MissingFields:
      return " (" + std::to_string(flaw.fields) + " of " + std::to_string(kFields) + ")";
    case Kind::BadVolume:
    case Kind::HugeVolume:
      return " (" + Quoted(flaw.volume) + ")";
    case Kind::NoQuote:
    case Kind::EmptyQuote:
    case Kind::NoVolume:
      break;
  }
  return {};
}

std::string_view BeginningOf(Kind kind) {
  switch (kind) {
    case Kind::MissingFields:
      return "QuoteTracker sent too few fields for ";
    case Kind::NoVolume:
      return "QuoteTracker sent no volume, so LastVolume stays empty, for ";
    case Kind::HugeVolume:
      return "The volume is too large to count with, so LastVolume stays empty, for ";
    case Kind::BadVolume:
      return "The volume is no number, so LastVolume stays empty, for ";
    case Kind::EmptyQuote:
      return kKnowsNoQuoteOf;
    case Kind::NoQuote:
      break;
  }
  return "QuoteTracker sent no quote for ";
}

}  // namespace

bool CanBeAskedFor(const std::string& ticker) {
  return !ticker.empty() && ticker.find_first_of(",()") == std::string::npos && Visible(ticker) == ticker;
}

SnapshotFeed::SnapshotFeed(cMirelo& facade, wire::MendedReplies& replies, std::vector<std::string> tickers)
    : facade_(facade), replies_(replies), tickers_(std::move(tickers)) {
  for (std::size_t place = 0; place < tickers_.size(); ++place) {
    if (!CanBeAskedFor(tickers_[place])) continue;
    asked_.push_back(tickers_[place]);
    places_.push_back(place);
  }
  // A list that fills its last batch comes back empty. One more ticker avoids that; its row is not shown.
  if (!asked_.empty() && asked_.size() % std::size_t{kTickersPerRequest} == 0)
    asked_.push_back(asked_.back());

  columns_ = VisibleColumns();
  for (const std::string& column : columns_) {
    codes_.push_back(ColumnCode(UCase(column)));
    readings_.push_back(ReadingOf(column));
  }
  newest_.assign(tickers_.size(), QuoteRow(columns_.size()));
  has_quote_.assign(tickers_.size(), false);
  facade_.LoadMasPosition();
  if (!asked_.empty()) facade_.masPrevVolume(VariantArray(1, TableRow(asked_.size() - 1), 1, 2));
}

SnapshotFeed::~SnapshotFeed() { replies_.LeftOut.Unsubscribe(on_left_out_); }

void SnapshotFeed::Follow(const QuoteTrail& trail) {
  trail_ = &trail;
  on_left_out_ = replies_.LeftOut.Subscribe(
      [this](std::string_view record) { left_out_.push_back(AnsiToText(record)); });
}

std::optional<QuoteRows> SnapshotFeed::Fetch() {
  TellUnasked();
  has_quote_.assign(tickers_.size(), false);
  left_out_.clear();
  if (asked_.empty()) {
    QuoteRows rows(tickers_.size(), QuoteRow(columns_.size()));
    if (trail_ != nullptr) NoteCame(rows, {});
    return rows;
  }

  replies_.TakeFlaws();
  const Variant volumes = facade_.masPrevVolume();
  Variant tickers = VariantArray::OfTexts(asked_);
  const Variant reply = facade_.GetLastQuote(tickers);
  const Flaws flaws = replies_.TakeFlaws();
  KeepVolumes(flaws, volumes.AsArray());
  if (!reply.IsArray()) {
    if (trail_ != nullptr) trail_->NoteForAll("QuoteTracker was asked and gave no quotes");
    return std::nullopt;
  }

  QuoteRows rows = RowsOf(reply.AsArray());
  LeaveOut(flaws, rows);
  FindQuotes(flaws, rows);
  Tell(flaws);
  if (trail_ != nullptr) NoteCame(rows, flaws);
  FillWhatIsLacking(flaws, rows);
  KeepQuotes(rows);
  return rows;
}

QuoteRows SnapshotFeed::RowsOf(const VariantArray& table) const {
  QuoteRows rows(tickers_.size(), QuoteRow(columns_.size()));
  for (std::size_t i = 0; i < places_.size(); ++i) {
    QuoteRow& row = rows[places_[i]];
    std::int32_t column = table.LBound(2);
    for (std::size_t c = 0; c < row.size() && column <= table.UBound(2); ++c, ++column) {
      row[c] = ReadValue(readings_[c], table(TableRow(i), column).ToText());
      // A volume that begins anew within a day: as with the first quote of a day nothing is known of it.
      if (codes_[c] == CodeOf(Column::LastVolume) && row[c].ToNumber() < 0) row[c].Set(0);
    }
  }
  return rows;
}

// What stands in the place of a value that did not come is no value.
void SnapshotFeed::LeaveOut(const Flaws& flaws, QuoteRows& rows) const {
  for (const wire::QuoteFlaw& flaw : flaws) {
    if (flaw.ticker >= places_.size()) continue;
    QuoteRow& row = rows[places_[flaw.ticker]];
    if (IsNoQuote(flaw)) {
      LeaveOutQuote(row, asked_[flaw.ticker]);
    } else if (LacksVolume(flaw)) {
      LeaveOutVolume(row, flaw.volume);
    }
  }
}

void SnapshotFeed::LeaveOutQuote(QuoteRow& row, const std::string& ticker) const {
  for (std::size_t c = 0; c < row.size(); ++c) {
    row[c] = readings_[c] == Reading::AsText ? QuoteValue::Text(ticker) : QuoteValue();
  }
}

void SnapshotFeed::FindQuotes(const Flaws& flaws, const QuoteRows& rows) {
  const bool shows_quotes = ShowsQuotes();
  for (const std::size_t place : places_) has_quote_[place] = !shows_quotes || HoldsMore(rows[place]);
  for (const wire::QuoteFlaw& flaw : flaws) {
    if (flaw.ticker < places_.size() && SaysNothing(flaw)) has_quote_[places_[flaw.ticker]] = false;
  }
}

// Than its ticker.
bool SnapshotFeed::HoldsMore(const QuoteRow& row) const {
  for (std::size_t c = 0; c < row.size(); ++c) {
    if (readings_[c] != Reading::AsText && !row[c].IsNothing()) return true;
  }
  return false;
}

bool SnapshotFeed::ShowsQuotes() const {
  for (std::size_t c = 0; c < codes_.size(); ++c) {
    if (readings_[c] != Reading::AsText && codes_[c] != kUnknownColumn) return true;
  }
  return false;
}

void SnapshotFeed::LeaveOutVolume(QuoteRow& row, const std::string& text) const {
  for (std::size_t c = 0; c < row.size(); ++c) {
    if (codes_[c] == CodeOf(Column::Volume)) row[c] = ReadValue(readings_[c], text);
    if (codes_[c] == CodeOf(Column::LastVolume)) row[c] = {};
  }
}

// A record that breaks off says nothing of the values behind its end: they are what they were. LastVolume
// alone is always that of the newest record, and a row of nothing but its ticker is no quote.
void SnapshotFeed::FillWhatIsLacking(const Flaws& flaws, QuoteRows& rows) {
  filled_.clear();
  for (const wire::QuoteFlaw& flaw : flaws) {
    if (flaw.ticker >= places_.size()) continue;
    const std::size_t place = places_[flaw.ticker];
    if (!has_quote_[place]) continue;
    for (std::size_t c = 0; c < codes_.size(); ++c) {
      if (!Lacks(flaw, codes_[c])) continue;
      rows[place][c] = newest_[place][c];
      filled_.emplace_back(place, c);
    }
  }
}

QuoteRow SnapshotFeed::AsItCame(std::size_t ticker, QuoteRow row) const {
  for (const auto& [place, column] : filled_) {
    if (place == ticker) row[column] = {};
  }
  return row;
}

void SnapshotFeed::KeepQuotes(const QuoteRows& rows) {
  for (std::size_t place = 0; place < rows.size(); ++place) {
    if (has_quote_[place]) newest_[place] = rows[place];
  }
}

// The volume before goes on to be that of the last record that had one.
void SnapshotFeed::KeepVolumes(const Flaws& flaws, const VariantArray& before) {
  for (const wire::QuoteFlaw& flaw : flaws) {
    if (!LacksVolume(flaw) || flaw.ticker >= asked_.size()) continue;
    for (const std::int32_t index : kVolumeAndDate) {
      facade_.masPrevVolume().AsArray()(TableRow(flaw.ticker), index) = before(TableRow(flaw.ticker), index);
    }
  }
}

void SnapshotFeed::TellUnasked() {
  if (places_.size() == tickers_.size() || std::exchange(told_unasked_, true)) return;
  std::vector<std::string> unasked;
  for (const std::string& ticker : tickers_) {
    if (!CanBeAskedFor(ticker)) unasked.push_back(Quoted(ticker));
  }
  Told.Raise("Not asked for, as a ticker holds no comma or bracket: " + Listed(unasked));
}

void SnapshotFeed::Tell(const Flaws& flaws) {
  for (const Kind kind : {Kind::NoQuote, Kind::EmptyQuote, Kind::MissingFields, Kind::NoVolume,
                          Kind::BadVolume, Kind::HugeVolume}) {
    std::vector<std::string> names;
    for (const wire::QuoteFlaw& flaw : flaws) {
      if (flaw.kind != kind || flaw.ticker >= places_.size() || !IsMissed(flaw)) continue;
      if (!told_.emplace(flaw.ticker, kind).second) continue;
      names.push_back(asked_[flaw.ticker] + WhatIsWrong(flaw));
    }
    if (!names.empty()) Told.Raise(std::string(BeginningOf(kind)) + Listed(names));
  }
}

void SnapshotFeed::NoteCame(const QuoteRows& rows, const Flaws& flaws) const {
  NoteLeftOut(flaws);
  for (const wire::QuoteFlaw& flaw : flaws) {
    if (flaw.ticker >= places_.size()) continue;
    trail_->Note(asked_[flaw.ticker],
                 std::string(BeginningOf(flaw.kind)) + asked_[flaw.ticker] + WhatIsWrong(flaw));
  }
  for (std::size_t place = 0; place < tickers_.size(); ++place) {
    if (!trail_->Follows(tickers_[place])) continue;
    trail_->Note(tickers_[place],
                 std::ranges::find(places_, place) == places_.end()
                     ? "it cannot be asked for, as a ticker holds no comma or bracket"
                     : "QuoteTracker was asked and sent" + ValuesText(columns_, rows[place]));
  }
}

// A record that names somebody else may be that of a ticker that got none.
void SnapshotFeed::NoteLeftOut(const Flaws& flaws) const {
  for (const std::string& record : left_out_) {
    trail_->NoteLeftOutOfReply(record);
    for (const wire::QuoteFlaw& flaw : flaws) {
      if (flaw.kind != Kind::NoQuote || flaw.ticker >= places_.size()) continue;
      trail_->Note(asked_[flaw.ticker], "a record that names " + Quoted(record.substr(0, record.find(','))) +
                                            " is left out, as that was not asked for");
    }
  }
}

// Whether a column that is shown lacks something by it.
bool SnapshotFeed::IsMissed(const wire::QuoteFlaw& flaw) const {
  if (IsNoQuote(flaw)) return true;
  return std::ranges::any_of(
      codes_, [&](std::int16_t code) { return IsOfVolume(code) ? LacksVolume(flaw) : Lacks(flaw, code); });
}

}  // namespace mirelo::day
