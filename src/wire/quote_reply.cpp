#include "wire/quote_reply.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "automation/ansi.h"
#include "automation/number.h"
#include "automation/text.h"
#include "snapshot/column_vocabulary.h"

namespace mirelo::wire {

namespace {

using Lines = std::vector<std::string_view>;

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kFields = kReplyFields;
constexpr auto kTickerField = static_cast<std::size_t>(mirelo::Column::Ticker);
constexpr auto kVolumeField = static_cast<std::size_t>(mirelo::Column::Volume);
constexpr std::size_t kFirstOfMarket = static_cast<std::size_t>(mirelo::Column::Time) + 1;
constexpr auto kTickField = static_cast<std::size_t>(mirelo::Column::Tick);

// Differences of volumes are exact below it.
constexpr double kGreatestVolume = 1e15;

// The first pieces between the delimiters, so many at most: a reply may be long, and nothing in it but
// delimiters. An empty text has none.
void CutFirst(std::string_view text, std::string_view delimiter, std::size_t most, Lines& pieces) {
  pieces.clear();
  if (text.empty()) return;
  while (pieces.size() < most) {
    const std::size_t end = text.find(delimiter);
    pieces.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return;
    text.remove_prefix(end + delimiter.size());
  }
}

bool SameTicker(std::string_view a, std::string_view b) {
  return a == b || EqualText(AnsiToText(a), AnsiToText(b));
}

std::string_view TickerOf(std::string_view record) { return record.substr(0, record.find(',')); }

// What is wrong with a volume; nothing when it can be followed.
std::optional<QuoteFlaw::Kind> FlawOfVolume(std::string_view field) {
  if (field.empty()) return QuoteFlaw::Kind::NoVolume;
  const auto number = ParseNumber(AnsiToText(field));
  if (!number) return QuoteFlaw::Kind::BadVolume;
  if (std::abs(*number) >= kGreatestVolume) return QuoteFlaw::Kind::HugeVolume;
  return std::nullopt;
}

// Whether all that is said of the market is 0 or nothing. What is no number says something.
bool IsEmpty(const Lines& fields) {
  for (std::size_t i = kFirstOfMarket; i < std::min(fields.size(), kFields); ++i) {
    if (fields[i].empty() || i == kTickField) continue;
    const auto number = ParseNumber(AnsiToText(fields[i]));
    if (number != 0.0) return false;
  }
  return true;
}

// Gives each ticker its record; an empty one where there is none.
class Assignment {
 public:
  Assignment(const Lines& records, const std::vector<std::string>& tickers)
      : records_(records), tickers_(tickers), taken_(records.size()), of_(tickers.size()) {
    for (std::size_t i = 0; i < std::min(records.size(), tickers.size()); ++i) {
      if (SameTicker(TickerOf(records[i]), tickers[i])) Give(i, i);
    }
    for (std::size_t i = 0; i < records.size(); ++i) {
      if (!taken_[i]) GiveToWhomItNames(i);
    }
    if (records.size() != tickers.size()) return;
    for (std::size_t i = 0; i < records.size(); ++i) {
      if (!taken_[i] && of_[i].empty() && !NamesAnyTicker(i)) Give(i, i);
    }
  }

  std::string_view operator[](std::size_t ticker) const { return of_[ticker]; }
  bool IsTaken(std::size_t record) const { return taken_[record]; }

 private:
  void Give(std::size_t record, std::size_t ticker) {
    of_[ticker] = records_[record];
    taken_[record] = true;
  }

  void GiveToWhomItNames(std::size_t record) {
    const std::string_view name = TickerOf(records_[record]);
    for (std::size_t ticker = 0; ticker < tickers_.size(); ++ticker) {
      if (of_[ticker].empty() && SameTicker(name, tickers_[ticker])) return Give(record, ticker);
    }
  }

  bool NamesAnyTicker(std::size_t record) const {
    return std::ranges::any_of(tickers_, [name = TickerOf(records_[record])](const auto& ticker) {
      return SameTicker(name, ticker);
    });
  }

  const Lines& records_;
  const std::vector<std::string>& tickers_;
  std::vector<bool> taken_;
  Lines of_;
};

// Writes one record so that the facade can follow it, and notes what was wrong.
class RecordMender {
 public:
  explicit RecordMender(MendedReply& reply) : reply_(reply) {}

  void Add(std::size_t ticker, std::string_view record) {
    CutFirst(record, ",", kFields, fields_);
    // The last field of a record that breaks off may be the beginning of another value.
    if (fields_.size() > 1 && fields_.size() < kFields) fields_.pop_back();
    const std::size_t count = fields_.size();
    fields_.resize(kFields);
    if (count == 0) {
      reply_.flaws.push_back({ticker, QuoteFlaw::Kind::NoQuote, 0, {}});
    } else if (count < kFields) {
      reply_.flaws.push_back({ticker, QuoteFlaw::Kind::MissingFields, count, {}});
    } else if (IsEmpty(fields_)) {
      reply_.flaws.push_back({ticker, QuoteFlaw::Kind::EmptyQuote, 0, {}});
    }
    if (const auto flaw = FlawOfVolume(fields_[kVolumeField])) {
      if (count > kVolumeField && !IsEmpty(fields_))
        reply_.flaws.push_back({ticker, *flaw, 0, AnsiToText(fields_[kVolumeField])});
      fields_[kVolumeField] = "0";
    }
    reply_.body += kLineEnd;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
      if (i > 0) reply_.body += ',';
      reply_.body += fields_[i];
    }
  }

 private:
  MendedReply& reply_;
  Lines fields_;
};

bool IsInOrder(const Lines& records, const std::vector<std::string>& tickers) {
  if (records.size() != tickers.size()) return false;
  Lines fields;
  for (std::size_t i = 0; i < records.size(); ++i) {
    CutFirst(records[i], ",", kFields + 1, fields);
    if (fields.size() != kFields || !SameTicker(fields[kTickerField], tickers[i]) ||
        FlawOfVolume(fields[kVolumeField]) || IsEmpty(fields)) {
      return false;
    }
  }
  return true;
}

void LeaveOut(const Lines& records, const Assignment& assigned, std::string_view behind,
              const std::function<void(std::string_view)>& leave_out) {
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (!assigned.IsTaken(i) && !records[i].empty()) leave_out(records[i]);
  }
  if (behind.find_first_not_of(kLineEnd) != std::string_view::npos) leave_out(behind);
}

}  // namespace

MendedReply Mend(std::string body, const std::vector<std::string>& tickers,
                 const std::function<void(std::string_view)>& leave_out) {
  // Records past twice as many as there are tickers are nobody's.
  Lines records;
  CutFirst(body, kLineEnd, 1 + 2 * tickers.size() + 1, records);
  if (records.empty() || !EqualText(records.front(), "OK")) return {std::move(body), {}};
  const std::string_view status = records.front();
  records.erase(records.begin());
  // A line end behind the last record makes one more line, with nothing in it.
  while (!records.empty() && records.back().empty()) records.pop_back();
  const std::size_t length =
      records.empty() ? status.size()
                      : static_cast<std::size_t>(records.back().data() - body.data()) + records.back().size();
  if (IsInOrder(records, tickers)) {
    body.resize(length);
    return {std::move(body), {}};
  }

  MendedReply reply{std::string(status), {}};
  reply.body.reserve(body.size());
  const Assignment assigned(records, tickers);
  RecordMender mender(reply);
  for (std::size_t i = 0; i < tickers.size(); ++i) mender.Add(i, assigned[i]);
  if (leave_out) LeaveOut(records, assigned, std::string_view(body).substr(length), leave_out);
  return reply;
}

}  // namespace mirelo::wire
