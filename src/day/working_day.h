#pragma once

#include <chrono>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "automation/event.h"
#include "core/cMirelo.h"
#include "day/day_tables.h"
#include "day/pulse.h"
#include "day/snapshot_feed.h"
#include "day/stream_feed.h"
#include "host/message_loop.h"
#include "wire/kept_failure.h"

namespace mirelo::wire {
class MendedReplies;
class ObservedSockets;
}  // namespace mirelo::wire

namespace mirelo::host::excel {
class Application;
}

namespace mirelo::day {

class QuoteJournal;
class QuoteTrail;

// The macros' part in a working day: it holds the facade, shows the settings dialog, and then, as that was
// answered, asks for quotes at the pace of the settings or listens to the stream, and writes what comes into
// the workbook.
//
//   WorkingDay day(loop, sockets, replies, application);
//   if (!IsCommitted(day.ShowDialog())) return;
//   day.Start();
//   day.RunUntil(done);
//   day.Stop();
//
// Where somebody else's loop runs, as in an office, the day goes on without RunUntil: Over tells of its end,
// TakeFailure takes what leaves the loop's handlers, and RaiseFailure says what failed.
class WorkingDay {
 public:
  // How dates reach the cells. A format of the day alone: with the time in it, volumes would begin anew each
  // second.
  static constexpr const char* kDateFormat = "mm/dd/yyyy";

  // All must outlive the day, and be those of the installed host.
  WorkingDay(host::MessageLoop& loop, wire::ObservedSockets& sockets, wire::MendedReplies& replies,
             std::shared_ptr<host::excel::Application> application);
  ~WorkingDay();
  WorkingDay(const WorkingDay&) = delete;
  WorkingDay& operator=(const WorkingDay&) = delete;

  // The facade's LoadFrmMirelo: 77 (quotes are to be streamed), 78 (asked for) or 2 (nothing was committed).
  std::int32_t ShowDialog();
  // In place of ShowDialog: takes it for committed as it was last time, by the settings.
  void TakeSettings();

  // Notes there what becomes of each quote; to be called before Start. It must outlive the day.
  void Follow(QuoteTrail& trail);

  // Keeps there, too, each quote that history gets a row of, or would get without a limit; to be called
  // before Start. It must outlive the day.
  void KeepIn(QuoteJournal& journal) { journals_.push_back(&journal); }

  // A person works in the same workbook: no write takes much longer than this of the processor's time, the
  // last one excepted. Histories and charts are the later for it.
  void HoldAtMost(std::chrono::milliseconds time) { hold_at_most_ = time; }

  // Begins what the dialog was ended with; to be called once, after it was committed. Raises what a missing
  // credential, quote source or quote table raises.
  void Start();
  // Runs the loop until `done`, or until there is nothing more to come. What fails meanwhile leaves it: cells
  // that cannot be written, for one.
  void RunUntil(const std::function<bool()>& done);
  // Ends subscriptions and connections, and writes what is left.
  void Stop();
  // The same where the workbook is gone: nothing is written.
  void Abandon();

  // There is nothing more to come: quotes were to be asked for once, and were, or something failed. Raised
  // from within the loop's handlers, so a handler only notes it, and raises nothing.
  Event<> Over;
  // Takes what left a handler of the loop. What the stream cannot follow is told as a loss.
  void TakeFailure(const std::exception_ptr& failure);
  // Raises what failed, if anything did, and forgets it.
  void RaiseFailure();

  // Whether Start has found the quote table.
  bool HasTables() const { return tables_.has_value(); }
  const DayTables& Tables() const { return *tables_; }
  // Fits the columns' widths to what they hold.
  void Fit() {
    if (tables_) tables_->Fit();
  }
  // Somebody else has changed the workbook: quotes go where its tables stand now.
  void LookAgain() {
    if (tables_) tables_->LookAgain();
  }
  // Counts the quotes that came, for a status line.
  Pulse& Came() { return came_; }
  const Pulse& Came() const { return came_; }
  // How the quotes come, as the quote table says it: "Streaming( SOURCE )", "SnapShot( 10 sec)".
  std::string Source() const { return tables_ ? tables_->Title() : ""; }
  // cMirelo::DecimalPlacesFormat.
  std::string PriceFormat() { return facade_.DecimalPlacesFormat(); }
  // How often a stream has reconnected.
  int Reconnects() const { return stream_ ? stream_->Reconnects() : 0; }
  // How many of the quotes that came have reached the sheets.
  std::int64_t Written() const { return written_; }

  // A call that asks for quotes, and waits for them, begins; and it has returned, or failed.
  Event<> Asks;
  Event<> Asked;

  // A line for a person.
  Event<const std::string&> Status;
  // The same line as by Status where QuoteTracker has refused the credentials: no quote will come with them.
  Event<const std::string&> LoginRefused;
  // Quotes have reached the cells.
  Event<> Wrote;

 private:
  void Ask();
  void Listen();
  void TakeAsked(std::size_t ticker, const QuoteRow& row);
  void TakeStreamed(const cQTData& quote);
  void WriteInTime();
  void Write();

  host::MessageLoop& loop_;
  wire::ObservedSockets& sockets_;
  wire::MendedReplies& replies_;
  std::shared_ptr<host::excel::Application> application_;
  cMirelo facade_;
  const QuoteTrail* trail_ = nullptr;
  std::vector<QuoteJournal*> journals_;
  std::int32_t result_ = 0;
  std::optional<DayTables> tables_;
  std::optional<SnapshotFeed> snapshot_;
  std::optional<StreamFeed> stream_;
  Pulse came_;
  std::int64_t written_ = 0;
  bool over_ = false;  // quotes were to be asked for once, and were
  bool is_stopped_ = false;
  wire::KeptFailure failure_;  // of asking and writing
  bool told_full_ = false;
  std::optional<std::chrono::milliseconds> hold_at_most_;
  std::chrono::steady_clock::time_point next_write_;  // not before
  host::MessageLoop::Token asking_ = 0;
  host::MessageLoop::Token writing_ = 0;
};

}  // namespace mirelo::day
