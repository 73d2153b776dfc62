#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/event.h"
#include "automation/variant.h"
#include "day/quote_rows.h"
#include "wire/quote_reply.h"

namespace mirelo::wire {
class MendedReplies;
}

namespace mirelo {
class cMirelo;
}

namespace mirelo::day {

class QuoteTrail;

// Quotes that are asked for, by the macros' part of the snapshot route: gives the facade its column order and
// the volume table, and asks it for quotes, once for each Fetch. What is wrong with one ticker costs the
// others nothing.
class SnapshotFeed {
 public:
  // `facade` and `replies` must outlive the feed; `replies` is the installed host's HTTP client. `tickers` is
  // not empty.
  SnapshotFeed(cMirelo& facade, wire::MendedReplies& replies, std::vector<std::string> tickers);
  ~SnapshotFeed();
  SnapshotFeed(const SnapshotFeed&) = delete;
  SnapshotFeed& operator=(const SnapshotFeed&) = delete;

  const std::vector<std::string>& Tickers() const { return tickers_; }
  // The visible columns, in table order, as the settings name them.
  const std::vector<std::string>& Columns() const { return columns_; }

  // Notes there what becomes of quotes; to be called once. It must outlive the feed.
  void Follow(const QuoteTrail& trail);

  // A row per ticker, a value per column of Columns(); it is nothing when the column is unknown or
  // QuoteTracker sent nothing for it. What a record that breaks off lacks is as in the ticker's quote before,
  // but for the volumes, which are nothing. No rows when QuoteTracker could not be asked or did not answer as
  // it should; the person has been told by then.
  std::optional<QuoteRows> Fetch();

  // The row that the last Fetch has given for this ticker, counted from 0, without what was filled in from
  // the quote before: what its record had.
  QuoteRow AsItCame(std::size_t ticker, QuoteRow row) const;

  // Whether the last Fetch has brought a quote of the ticker with this number: QuoteTracker knows the ticker,
  // and its record holds something that the columns show. Where they show nothing of any quote, all count.
  bool HasQuote(std::size_t ticker) const { return has_quote_[ticker]; }
  // Whether there is a column for anything that a quote brings.
  bool ShowsQuotes() const;

  // A line for a person: what is wrong with records of tickers, each thing once.
  Event<const std::string&> Told;

 private:
  using Flaws = std::vector<wire::QuoteFlaw>;

  QuoteRows RowsOf(const VariantArray& table) const;
  void FindQuotes(const Flaws& flaws, const QuoteRows& rows);
  bool HoldsMore(const QuoteRow& row) const;
  void LeaveOut(const Flaws& flaws, QuoteRows& rows) const;
  void LeaveOutQuote(QuoteRow& row, const std::string& ticker) const;
  void LeaveOutVolume(QuoteRow& row, const std::string& text) const;
  void FillWhatIsLacking(const Flaws& flaws, QuoteRows& rows);
  void KeepQuotes(const QuoteRows& rows);
  void KeepVolumes(const Flaws& flaws, const VariantArray& before);
  void TellUnasked();
  void Tell(const Flaws& flaws);
  void NoteCame(const QuoteRows& rows, const Flaws& flaws) const;
  void NoteLeftOut(const Flaws& flaws) const;
  bool IsMissed(const wire::QuoteFlaw& flaw) const;

  cMirelo& facade_;
  wire::MendedReplies& replies_;
  std::vector<std::string> tickers_;
  std::vector<std::string> asked_;   // those that can be asked for
  std::vector<std::size_t> places_;  // of them, among all
  std::vector<std::string> columns_;
  std::vector<std::int16_t> codes_;                          // of the columns
  std::vector<Reading> readings_;                            // of their texts
  QuoteRows newest_;                                         // quote of each ticker
  std::vector<bool> has_quote_;                              // of the last Fetch
  std::vector<std::pair<std::size_t, std::size_t>> filled_;  // in at the last Fetch: ticker and column
  std::set<std::pair<std::size_t, wire::QuoteFlaw::Kind>> told_;
  bool told_unasked_ = false;
  const QuoteTrail* trail_ = nullptr;
  std::vector<std::string> left_out_;  // of the last reply, for the trail
  Event<std::string_view>::Cookie on_left_out_ = 0;
};

// Whether a request for quotes can name the ticker: it is not empty, and holds no comma, bracket or invisible
// character.
bool CanBeAskedFor(const std::string& ticker);

}  // namespace mirelo::day
