#include "day/quote_trail.h"

#include <algorithm>
#include <cstddef>

#include "automation/ansi.h"
#include "automation/text.h"
#include "wire/message_bounds.h"
#include "wire/observed_sockets.h"
#include "wire/record_look.h"

namespace mirelo::day {

namespace {

std::string_view AsText(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string InBytes(std::size_t count) { return std::to_string(count) + (count == 1 ? " byte" : " bytes"); }

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
    if (followed_.insert(UCase(ticker)).second) tickers_.push_back(ticker);
  }
}

QuoteTrail::~QuoteTrail() {
  if (sockets_ == nullptr) return;
  sockets_->Delivered.Unsubscribe(delivered_);
  sockets_->LeftOut.Unsubscribe(left_out_);
}

bool QuoteTrail::Follows(std::string_view ticker) const {
  return followed_.contains(UCase(std::string(ticker)));
}

void QuoteTrail::Note(std::string_view ticker, std::string_view what) const {
  if (!Follows(ticker)) return;
  log_.Write(host::Log::Level::Info, std::string(ticker).append(": ").append(what));
}

void QuoteTrail::NoteForAll(std::string_view what) const {
  for (const std::string& ticker : tickers_) Note(ticker, what);
}

void QuoteTrail::Watch(wire::ObservedSockets& sockets) {
  sockets_ = &sockets;
  delivered_ =
      sockets.Delivered.Subscribe([this](std::span<const std::uint8_t> message) { NoteRecords(message); });
  left_out_ = sockets.LeftOut.Subscribe([this](std::span<const std::uint8_t> bytes) { NoteLeftOut(bytes); });
}

// A message of records holds whole ones, of which the last may state a length that is wrong.
void QuoteTrail::NoteRecords(std::span<const std::uint8_t> message) const {
  std::string_view rest = AsText(message);
  while (rest.size() >= wire::kLeastRecord && wire::KindOf(rest) == wire::MessageKind::kRecord) {
    const std::int32_t length = wire::LengthOf(rest);
    if (length < static_cast<std::int32_t>(wire::kRecordHead)) return;
    const std::string_view record = rest.substr(0, static_cast<std::size_t>(length));
    Note(AnsiToText(wire::LookAt(record).symbol),
         "a record of " + InBytes(record.size()) + " came, in a message of " + InBytes(message.size()));
    rest.remove_prefix(record.size());
  }
}

// Of bytes that are no message only this can be said: whether the ticker's letters stand in them.
void QuoteTrail::NoteLeftOut(std::span<const std::uint8_t> bytes) const {
  const std::string text = UCase(AnsiToText(bytes));
  for (const std::string& ticker : tickers_) {
    if (text.find(UCase(ticker)) == std::string::npos) continue;
    Note(ticker, InBytes(bytes.size()) +
                     " in which it is named are left out: they make no whole message, or one that "
                     "nobody asked for");
  }
}

}  // namespace mirelo::day
