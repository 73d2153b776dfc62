#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/options.h"
#include "app/session.h"
#include "app/temporary_folder.h"
#include "day/noted_quotes.h"
#include "day/working_day.h"
#include "host/documents.h"
#include "host/excel/worksheet.h"
#include "host/message_loop.h"
#include "person/dialog_person.h"
#include "person/dialog_wishes.h"
#include "quotetracker/server.h"
#include "terminal/output.h"

namespace mirelo {

// A working day of streamed quotes, on this machine, and QuoteTracker's stand-in, which notes when it hands
// each quote to its socket.
class NotedDay {
 public:
  // Presses Go in the dialog filled so. Quotes come at this rate from Start on.
  NotedDay(DialogWishes wishes, double rate);
  ~NotedDay();

  // Runs the day until `done`, which is asked after each step. May be called again.
  void RunUntil(const std::function<bool()>& done);

  // How old the quotes were that have come to the quote table's cells, without those of the first moments.
  const std::vector<std::chrono::nanoseconds>& Ages() const { return ages_->All(); }

  host::MessageLoop& loop() { return session_->host().loop(); }
  host::Document& document() { return *document_; }
  day::WorkingDay& day() { return *day_; }
  const app::TemporaryFolder& folder() const { return folder_; }
  const std::vector<std::string>& tickers() const { return wishes_.tickers; }

 private:
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
  std::optional<CellAges> ages_;
  bool has_started_ = false;
};

}  // namespace mirelo
