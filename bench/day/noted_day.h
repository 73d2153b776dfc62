#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/options.h"
#include "app/session.h"
#include "app/temporary_folder.h"
#include "day/working_day.h"
#include "host/documents.h"
#include "host/excel/worksheet.h"
#include "host/message_loop.h"
#include "person/dialog_person.h"
#include "person/dialog_wishes.h"
#include "quotetracker/server.h"
#include "terminal/output.h"

namespace mirelo {

// When each quote was sent. A quote is told by its volume, which is its number, counted from 1.
class Sendings {
 public:
  using Clock = std::chrono::steady_clock;

  void Note(std::int64_t number) {
    times_[static_cast<std::size_t>(number) % times_.size()] = Clock::now().time_since_epoch().count();
    newest_ = number;
  }
  // Not so for the quote of a ticker that is told when it is subscribed to.
  bool Has(std::int64_t number) const { return number > 0 && number <= newest_; }
  std::chrono::nanoseconds AgeOf(std::int64_t number) const {
    return Clock::now().time_since_epoch() -
           Clock::duration(times_[static_cast<std::size_t>(number) % times_.size()]);
  }

 private:
  std::array<std::atomic<Clock::rep>, 65536> times_{};
  std::atomic<std::int64_t> newest_ = 0;
};

// A working day of streamed quotes, on this machine, and QuoteTracker's stand-in, which notes when it hands
// each quote to its socket.
class NotedDay {
 public:
  // A streaming day of these tickers, of which each has a history of these fields.
  static DialogWishes Streaming(std::vector<std::string> tickers, const std::vector<std::string>& fields);

  // Presses Go in the dialog filled so. Quotes come at this rate from Start on.
  NotedDay(DialogWishes wishes, double rate);
  ~NotedDay();

  // Runs the day until `done`, which is asked after each step. May be called again.
  void RunUntil(const std::function<bool()>& done);

  // How old the quotes were that have come to the quote table's cells, without those of the first moments.
  const std::vector<std::chrono::nanoseconds>& Ages() const { return ages_; }

  host::MessageLoop& loop() { return session_->host().loop(); }
  host::Document& document() { return *document_; }
  day::WorkingDay& day() { return *day_; }
  const app::TemporaryFolder& folder() const { return folder_; }
  const std::vector<std::string>& tickers() const { return wishes_.tickers; }

 private:
  void NoteAges();

  app::TemporaryFolder folder_;
  DialogWishes wishes_;
  Sendings sendings_;
  app::GlobalOptions options_;
  std::unique_ptr<quotetracker::Server> server_;
  std::unique_ptr<app::Session> session_;
  terminal::TextOutput printed_;
  std::unique_ptr<DialogPerson> person_;
  std::unique_ptr<host::Document> document_;
  std::unique_ptr<day::WorkingDay> day_;
  std::shared_ptr<host::excel::Worksheet> table_;
  std::vector<std::int64_t> seen_;
  std::vector<std::chrono::nanoseconds> ages_;
  bool has_started_ = false;
};

}  // namespace mirelo
