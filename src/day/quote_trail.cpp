#include "day/quote_trail.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "automation/ansi.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "wire/message_bounds.h"
#include "wire/observed_sockets.h"
#include "wire/record_probe.h"

namespace mirelo::day {

namespace {

using Bytes = std::span<const std::uint8_t>;

std::string_view AsText(Bytes bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

std::string InBytes(std::size_t count) { return std::to_string(count) + (count == 1 ? " byte" : " bytes"); }

// Records that stand side by side, and what stands behind them: one that is not whole, or no record.
struct Records {
  std::vector<std::string_view> whole;
  std::string_view rest;
};
Records RecordsIn(std::string_view bytes) {
  Records records{{}, bytes};
  std::string_view& rest = records.rest;
  while (rest.size() >= wire::kLeastRecord && wire::KindOf(rest) == wire::MessageKind::kRecord) {
    const std::int32_t length = wire::LengthOf(rest);
    if (length < static_cast<std::int32_t>(wire::kRecordHead) ||
        length > static_cast<std::int32_t>(rest.size()))
      break;
    records.whole.push_back(rest.substr(0, static_cast<std::size_t>(length)));
    rest.remove_prefix(static_cast<std::size_t>(length));
  }
  return records;
}

bool BeginsARecord(std::string_view bytes) {
  return bytes.size() >= 2 && wire::KindOf(bytes) == wire::MessageKind::kRecord;
}

// Whether they end with a record that breaks off before its ticker.
bool EndsBeforeATicker(std::string_view bytes) {
  const std::string_view rest = RecordsIn(bytes).rest;
  if (!BeginsARecord(rest)) return false;
  return rest.size() < wire::kLeastRecord || wire::ProbeRecord(rest).symbol.empty();
}

}  // namespace

std::string ValuesText(const std::vector<std::string>& columns, const QuoteRow& row) {
  std::string text;
  for (std::size_t c = 0; c < std::min(columns.size(), row.size()); ++c) {
    if (!row[c].IsNothing()) text += " " + columns[c] + "=" + row[c].ToText();
  }
  return text;
}

QuoteTrail::QuoteTrail(host::Log& log, const std::vector<std::string>& tickers) : log_(log) {
  for (const std::string& ticker : tickers) {
    if (!ticker.empty() && followed_.insert(UCase(ticker)).second) tickers_.push_back(ticker);
  }
}

QuoteTrail::~QuoteTrail() {
  if (sockets_ == nullptr) return;
  sockets_->Delivered.Unsubscribe(delivered_);
  sockets_->LeftOut.Unsubscribe(left_out_);
  sockets_->Abandoned.Unsubscribe(abandoned_);
}

bool QuoteTrail::Follows(std::string_view ticker) const {
  return ticker.empty() || followed_.contains(UCase(std::string(ticker)));
}

void QuoteTrail::Note(std::string_view ticker, std::string_view what) const {
  if (ticker.empty())
    return NoteForAll(std::string("perhaps of this ticker, as the record names none: ").append(what));
  if (!Follows(ticker)) return;
  log_.Write(host::Log::Level::Info, std::string(ticker).append(": ").append(what));
}

void QuoteTrail::NoteForAll(std::string_view what) const {
  for (const std::string& ticker : tickers_) Note(ticker, what);
}

void QuoteTrail::Watch(wire::ObservedSockets& sockets) {
  sockets_ = &sockets;
  delivered_ = sockets.Delivered.Subscribe([this](Bytes message) { NoteRecords(message); });
  left_out_ = sockets.LeftOut.Subscribe([this](Bytes bytes) { NoteLeftOut(bytes); });
  abandoned_ = sockets.Abandoned.Subscribe([this](Bytes bytes) { NoteAbandoned(bytes); });
}

void QuoteTrail::NoteRecords(Bytes message) {
  left_out_before_.clear();
  const auto note = [&](std::string_view record) {
    NoteOfRecord(record, "a record of " + InBytes(record.size()) + " came, in a message of " +
                             InBytes(message.size()));
  };
  const auto [whole, rest] = RecordsIn(AsText(message));
  for (const std::string_view record : whole) note(record);
  if (BeginsARecord(rest)) note(rest);
}

void QuoteTrail::NoteLost(Bytes records) const {
  const std::string reason = CurrentError().Description();
  const auto [whole, rest] = RecordsIn(AsText(records));
  std::string what = "its record is lost, as it cannot be followed: " + reason;
  for (const std::string_view record : whole)
    NoteOfRecord(record, std::exchange(what, "its record is lost with one before it: " + reason));
  if (!rest.empty()) NoteOfRecord(rest, what);
}

void QuoteTrail::NoteLeftOutOfReply(std::string_view records) const {
  const std::string text = UCase(std::string(records));
  for (const std::string& ticker : tickers_) {
    if (text.find(UCase(ticker)) == std::string::npos) continue;
    Note(ticker, std::to_string(Len(records)) +
                     " characters of the reply in which it is named are left out: they are no record of a "
                     "ticker that was asked for and has none yet");
  }
}

// Of bytes that are no message only this can be said: whether the ticker's letters stand in them. They are
// left out piece by piece, so the letters may begin with the piece before.
void QuoteTrail::NoteLeftOut(Bytes bytes) {
  const std::string text = left_out_before_ + UCase(AnsiToText(AsText(bytes)));
  std::size_t longest = 1;
  for (const std::string& ticker : tickers_) {
    const std::string name = UCase(ticker);
    longest = std::max(longest, name.size());
    const std::size_t told_before =
        left_out_before_.size() - std::min(left_out_before_.size(), name.size() - 1);
    if (text.find(name, told_before) == std::string::npos) continue;
    Note(ticker, InBytes(bytes.size()) +
                     " in which it is named are left out: they make no whole message, or one that "
                     "nobody asked for");
  }
  left_out_before_ = text.substr(text.size() - std::min(text.size(), longest - 1));
}

// What is unfinished may be a record whose ticker has not come.
void QuoteTrail::NoteAbandoned(Bytes bytes) const {
  const std::string text = UCase(AnsiToText(AsText(bytes)));
  const bool may_be_anybodys = EndsBeforeATicker(AsText(bytes));
  for (const std::string& ticker : tickers_) {
    const bool is_named = text.find(UCase(ticker)) != std::string::npos;
    if (!is_named && !may_be_anybodys) continue;
    Note(ticker, InBytes(bytes.size()) +
                     (is_named ? " in which it is named" : " with a record whose ticker had not come") +
                     " waited to be handed over when the connection ended, and are left out");
  }
}

// What is no record names no ticker.
void QuoteTrail::NoteOfRecord(std::string_view record, std::string_view what) const {
  const bool has_fields = BeginsARecord(record) && record.size() >= wire::kLeastRecord;
  Note(has_fields ? AnsiToText(wire::ProbeRecord(record).symbol) : std::string(), what);
}

}  // namespace mirelo::day
