#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/live_table.h"
#include "host/message_loop.h"

namespace mirelo::day {
class WorkingDay;
}

namespace mirelo::app {

class WorkbookKeeper;

// A working day as a person at the terminal sees it: a table that stands in place with a status line, or,
// where the standard output is no terminal, a line now and then on the standard error.
class DayView {
 public:
  // All must outlive the view.
  DayView(host::MessageLoop& loop, day::WorkingDay& day, WorkbookKeeper& keeper);
  ~DayView();
  DayView(const DayView&) = delete;
  DayView& operator=(const DayView&) = delete;

  // Between these the day goes on.
  void Begin();
  void End();

  // Prints the last quotes of all tickers once more, and names the sheets of the file that hold the rest.
  void Summarize(const std::string& file) const;

 private:
  void Tell(const std::string& text);
  void TellOfSaving(const std::string& text);
  void PrintLater();
  std::string Status();

  host::MessageLoop& loop_;
  day::WorkingDay& day_;
  WorkbookKeeper& keeper_;
  bool terminal_;
  bool has_ended_ = false;
  std::string state_ = "Starting";
  std::optional<LiveTable> live_;
  host::MessageLoop::Token timer_ = 0;
};

}  // namespace mirelo::app
