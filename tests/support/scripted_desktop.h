#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "host/desktop.h"

namespace mirelo::testing {

// A person at the machine who answers as told beforehand, and a record of all that was shown.
class ScriptedDesktop : public host::Desktop {
 public:
  struct Box {
    std::string text;
    int style = 0;
    std::string title;
    friend bool operator==(const Box&, const Box&) = default;
  };
  struct Report {
    std::string text;
    std::string support_mail;
  };

  // What was shown, oldest first.
  std::vector<Box> boxes;
  std::vector<Report> reports;
  int beeps = 0;

  // Answers to come, used up from the front. When none is left, a box is answered Ok (Abort and No where
  // there is no Ok button) and a report "ABORT".
  std::deque<Answer> answers;
  std::deque<std::string> report_answers;

  // Called while a box or report is open, if set: what else goes on in the program meanwhile.
  std::function<void()> while_open;

  Answer MessageBox(const std::string& text, int style, const std::string& title) override;
  std::string ShowErrorReport(const std::string& report, const std::string& support_mail) override;
  void Beep() override { ++beeps; }
};

// Prints a box readably in a failing test.
void PrintTo(const ScriptedDesktop::Box& box, std::ostream* out);

}  // namespace mirelo::testing
