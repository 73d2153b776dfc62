#include "day/snapshot_feed.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "automation/text.h"
#include "automation/visible_text.h"
#include "core/cMirelo.h"
#include "snapshot/column_vocabulary.h"
#include "snapshot/tickers_per_request.h"
#include "wire/mended_replies.h"

namespace mirelo::day {

namespace {

using Kind = wire::QuoteFlaw::Kind;

constexpr std::size_t kFields = kReplyFields;
constexpr std::size_t kVolumeFields = static_cast<std::size_t>(Column::Volume) + 1;

// Second indexes of the facade's table of volumes.
constexpr std::int32_t kVolumeAndDate[] = {1, 2};

// Of tickers, and of a text, in what a person is told.
constexpr std::size_t kMostNames = 5;
constexpr std::int32_t kMostCharacters = 20;

bool LacksVolume(const wire::QuoteFlaw& flaw) {
  return flaw.kind != Kind::MissingFields || flaw.fields < kVolumeFields;
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
  std::ranges::transform(columns_, std::back_inserter(readings_), ReadingOf);
  facade_.LoadMasPosition();
  if (!asked_.empty()) facade_.masPrevVolume(VariantArray(1, TableRow(asked_.size() - 1), 1, 2));
}

std::optional<QuoteRows> SnapshotFeed::Fetch() {
  TellUnasked();
  if (asked_.empty()) return QuoteRows(tickers_.size(), QuoteRow(columns_.size()));

  replies_.TakeFlaws();
  const Variant volumes = facade_.masPrevVolume();
  Variant tickers = VariantArray::OfTexts(asked_);
  const Variant reply = facade_.GetLastQuote(tickers);
  const Flaws flaws = replies_.TakeFlaws();
  KeepVolumes(flaws, volumes.AsArray());
  if (!reply.IsArray()) return std::nullopt;

  QuoteRows rows = RowsOf(reply.AsArray());
  LeaveOut(flaws, rows);
  Tell(flaws);
  return rows;
}

QuoteRows SnapshotFeed::RowsOf(const VariantArray& table) const {
  QuoteRows rows(tickers_.size(), QuoteRow(columns_.size()));
  for (std::size_t i = 0; i < places_.size(); ++i) {
    QuoteRow& row = rows[places_[i]];
    row.clear();
    for (std::int32_t c = table.LBound(2); c <= table.UBound(2); ++c) {
      const std::size_t column = row.size();
      row.push_back(ReadValue(column < readings_.size() ? readings_[column] : Reading::AsText,
                              table(TableRow(i), c).ToText()));
    }
  }
  return rows;
}

// What stands in the place of a value that did not come is no value.
void SnapshotFeed::LeaveOut(const Flaws& flaws, QuoteRows& rows) const {
  for (const wire::QuoteFlaw& flaw : flaws) {
    if (flaw.ticker >= places_.size()) continue;
    QuoteRow& row = rows[places_[flaw.ticker]];
    if (flaw.kind == Kind::NoQuote) {
      row.assign(row.size(), {});
    } else if (LacksVolume(flaw)) {
      LeaveOutVolume(row, flaw.volume);
    }
  }
}

void SnapshotFeed::LeaveOutVolume(QuoteRow& row, const std::string& text) const {
  for (std::size_t c = 0; c < std::min(row.size(), columns_.size()); ++c) {
    const std::int16_t code = ColumnCode(UCase(columns_[c]));
    if (code == CodeOf(Column::Volume)) row[c] = ReadValue(readings_[c], text);
    if (code == CodeOf(Column::LastVolume)) row[c] = {};
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
  for (const Kind kind :
       {Kind::NoQuote, Kind::MissingFields, Kind::NoVolume, Kind::BadVolume, Kind::HugeVolume}) {
    std::vector<std::string> names;
    for (const wire::QuoteFlaw& flaw : flaws) {
      if (flaw.kind != kind || flaw.ticker >= places_.size() || !IsMissed(flaw)) continue;
      if (!told_.emplace(flaw.ticker, kind).second) continue;
      names.push_back(asked_[flaw.ticker] + WhatIsWrong(flaw));
    }
    if (!names.empty()) Told.Raise(std::string(BeginningOf(kind)) + Listed(names));
  }
}

// Whether a column that is shown lacks something by it.
bool SnapshotFeed::IsMissed(const wire::QuoteFlaw& flaw) const {
  if (flaw.kind == Kind::NoQuote) return true;
  return std::ranges::any_of(columns_, [&](const std::string& column) {
    const std::int16_t code = ColumnCode(UCase(column));
    const bool is_made_here = code == CodeOf(Column::Date) || code == CodeOf(Column::Time);
    if (code == kUnknownColumn || is_made_here) return false;
    if (code == CodeOf(Column::Volume) || code == CodeOf(Column::LastVolume)) return LacksVolume(flaw);
    return flaw.kind == Kind::MissingFields && static_cast<std::size_t>(code) >= flaw.fields;
  });
}

}  // namespace mirelo::day
