#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "automation/event.h"
#include "automation/runtime_error.h"
#include "core/cQTData.h"
#include "day/quote_rows.h"
#include "host/data_table.h"
#include "host/journal.h"
#include "host/message_loop.h"

namespace mirelo::day {

// Keeps every quote of a day in a journal beside the workbook, whatever the limit of its histories: when it
// came, its ticker, and its values, of which those that its record lacked are nothing and those that came as
// 0 are 0. Quotes gather for a second at most and are then appended together, so the day waits for the
// journal once a second at most, and as much may be lost when the process is killed.
//
// A journal that fails ends no day: quotes wait, up to a bound, while it is opened again each second; those
// beyond the bound are counted as lost.
class QuoteJournal {
 public:
  using Moment = std::chrono::system_clock::time_point;
  using Open = std::function<std::unique_ptr<host::Journal>()>;

  static constexpr std::chrono::milliseconds kPause{1000};
  static constexpr std::size_t kMostWaiting = 20'000;

  // The columns of each row: when the quote came (UTC, "2026-11-22T14:05:12.123Z"), its ticker, and all other
  // columns of the vocabulary in an order for reading.
  static const std::vector<host::DataColumn>& Columns();

  // `open` gives a journal with these columns. `loop` must outlive this.
  QuoteJournal(
      host::MessageLoop& loop, Open open,
      std::function<Moment()> now = [] { return std::chrono::system_clock::now(); });
  ~QuoteJournal();
  QuoteJournal(const QuoteJournal&) = delete;
  QuoteJournal& operator=(const QuoteJournal&) = delete;

  // Opens the journal. host::JournalRefused leaves; of other failures Failed tells, and it is tried again.
  void Begin();

  // A streamed quote.
  void Take(const cQTData& quote);
  // A quote that was asked for: the values of these columns, as far as its record had them.
  void Take(const std::string& ticker, const std::vector<std::string>& columns, const QuoteRow& row);

  // Appends what waits, puts all on the disk and closes the journal. What cannot be appended is lost.
  void End();

  std::int64_t Kept() const { return kept_; }
  std::int64_t Lost() const { return lost_; }

  // Appending has failed. While it goes on failing for the same reason this is not raised again.
  Event<const RuntimeError&> Failed;
  // Appending succeeds after it has failed.
  Event<> Recovered;
  // A sentence for a person: what was mended of an older file.
  Event<const std::string&> Mended;

 private:
  host::DataRow NewRow(const std::string& ticker);
  void Add(host::DataRow row);
  void WriteLater();
  void Write() noexcept;
  void Append();
  void OpenJournal();
  void NoteFailure() noexcept;

  host::MessageLoop& loop_;
  Open open_;
  std::function<Moment()> now_;
  std::unique_ptr<host::Journal> journal_;  // null while it cannot be opened
  std::vector<host::DataRow> waiting_;
  QuoteRow fields_;  // of the streamed quote before, whose texts of days and times are most often the same
  std::int64_t kept_ = 0;
  std::int64_t lost_ = 0;
  std::string trouble_;
  std::int32_t trouble_number_ = 0;
  host::MessageLoop::Token timer_ = 0;
};

}  // namespace mirelo::day
