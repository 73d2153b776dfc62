#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/live/live_screen.h"
#include "app/live/seldom.h"
#include "automation/event.h"
#include "host/message_loop.h"

namespace mirelo::day {
class WorkingDay;
}

namespace mirelo::app {

class WorkbookKeeper;

// A working day as a person at the terminal sees it: a screen that follows the keys, or, where the standard
// output is no such terminal, a line now and then on the standard error.
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

  // The person has asked for the day's end.
  Event<> EndWished;

  // Prints the last quotes of all tickers once more, and names the sheets of the file that hold the rest.
  void Summarize(const std::string& file) const;

 private:
  void Tell(const std::string& text);
  void PrintLater();
  std::vector<std::string> About();

  host::MessageLoop& loop_;
  day::WorkingDay& day_;
  WorkbookKeeper& keeper_;
  std::string state_ = "Starting";
  Seldom seldom_;
  std::unique_ptr<LiveScreen> screen_;
  host::MessageLoop::Token timer_ = 0;
};

}  // namespace mirelo::app
