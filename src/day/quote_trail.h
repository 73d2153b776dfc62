#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "automation/event.h"
#include "day/quote_rows.h"
#include "host/log.h"

namespace mirelo::wire {
class ObservedSockets;
}

namespace mirelo::day {

// The values of a quote as they came, for the trail: " Last=26.05 Bid=26.04". What it lacks is left out.
std::string ValuesText(const std::vector<std::string>& columns, const QuoteRow& row);

// Writes down what becomes of the quotes of some tickers, step by step, for somebody who asks why one is not
// in its cell. Each place where a quote can end its way says so here.
class QuoteTrail {
 public:
  // `log` must outlive this. Tickers are followed without regard to case.
  QuoteTrail(host::Log& log, const std::vector<std::string>& tickers);
  ~QuoteTrail();
  QuoteTrail(const QuoteTrail&) = delete;
  QuoteTrail& operator=(const QuoteTrail&) = delete;

  // The tickers, each once.
  const std::vector<std::string>& Tickers() const { return tickers_; }
  // A quote that names no ticker may be of any.
  bool Follows(std::string_view ticker) const;

  // Writes down what became of a quote of the ticker, if that is followed: "MSFT: ...". One that names no
  // ticker may be of any, so that is written for each.
  void Note(std::string_view ticker, std::string_view what) const;
  // The same for all tickers that are followed.
  void NoteForAll(std::string_view what) const;

  // Follows records through the sockets: which come whole, and which bytes are left out or abandoned.
  // `sockets` must outlive this; to be called once.
  void Watch(wire::ObservedSockets& sockets);

  // Notes, for each ticker whose name stands in these records of a reply, that they were given to none.
  void NoteLeftOutOfReply(std::string_view records) const;

  // To be called while an error is handled: notes the records that are lost with it. The first of them is the
  // one that could not be followed.
  void NoteLost(std::span<const std::uint8_t> records) const;

 private:
  void NoteRecords(std::span<const std::uint8_t> message);
  void NoteLeftOut(std::span<const std::uint8_t> bytes);
  void NoteAbandoned(std::span<const std::uint8_t> bytes) const;
  void NoteOfRecord(std::string_view record, std::string_view what) const;

  host::Log& log_;
  std::vector<std::string> tickers_;
  std::unordered_set<std::string> followed_;  // the same in capital letters
  std::string
      left_out_before_;  // the end of what was left out last, if nothing came between, in capital letters
  wire::ObservedSockets* sockets_ = nullptr;
  Event<std::span<const std::uint8_t>>::Cookie delivered_ = 0;
  Event<std::span<const std::uint8_t>>::Cookie left_out_ = 0;
  Event<std::span<const std::uint8_t>>::Cookie abandoned_ = 0;
};

}  // namespace mirelo::day
