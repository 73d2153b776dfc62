#pragma once

#include <deque>
#include <iosfwd>
#include <string>

#include "host/desktop.h"

namespace mirelo::headless {

// A desktop for a machine without a display: what would be shown is printed, and nobody is there to answer.
//
//   error: Dovanta2: Please choose the tickers.
//   question: Dovanta2: Overwrite the table?
//     answered: No
//
// Beeps are not heard.
class ConsoleDesktop : public host::Desktop {
 public:
  // Answers given beforehand, used up from the front. When none is left, a box gets Ok, Abort where it asks
  // for Abort, Retry or Ignore, and No where it asks for Yes or No; a failure report gets "ABORT".
  struct Script {
    std::deque<Answer> box_answers;
    std::deque<std::string> report_answers;
  };

  // Prints to the standard error stream.
  ConsoleDesktop();
  // `out` must outlive the desktop.
  explicit ConsoleDesktop(std::ostream& out, Script script = {});

  Answer MessageBox(const std::string& text, int style, const std::string& title) override;
  std::string ShowErrorReport(const std::string& report, const std::string& support_mail) override;
  void Beep() override {}

 private:
  std::ostream& out_;
  Script script_;
};

}  // namespace mirelo::headless
