#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
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
  // What the error dialog showed.
  struct Report {
    std::string text;
    bool can_be_sent = false;
  };

  // What was shown, oldest first.
  std::vector<Box> boxes;
  std::vector<Report> reports;
  std::vector<std::string> forms;     // names of the other forms
  std::vector<std::string> launched;  // what the shell was asked to open
  int beeps = 0;
  int foreground_requests = 0;

  // Answers to come, used up from the front. When none is left, a box is answered Ok (Abort and No where
  // there is no Ok button) and a report "ABORT".
  std::deque<Answer> answers;
  std::deque<std::string> report_answers;  // tags; "" closes it by its close box

  // What the person does with a form, by its name: called while it is shown, once. A form that is still shown
  // afterwards, or that nobody was told of, is closed by its close box.
  std::map<std::string, std::function<void(forms::Form&)>> person;

  // Where the windows of forms are, by name. A form that is not listed has no placement.
  std::map<std::string, host::WindowPlacement> placements;
  std::optional<host::WindowPlacement> screen;
  bool takes_placements = true;
  int shell_result = 33;

  // Called while a box or report is open, if set: what else goes on in the program meanwhile.
  std::function<void()> while_open;

  Answer MessageBox(const std::string& text, int style, const std::string& title) override;
  void ShowModal(forms::Form& form) override;
  void Beep() override { ++beeps; }
  void SetForegroundWindow(forms::Form& /*form*/) override { ++foreground_requests; }
  std::optional<host::WindowPlacement> GetWindowPlacement(forms::Form& form) override;
  bool SetWindowPlacement(forms::Form& form, const host::WindowPlacement& placement) override;
  std::optional<host::WindowPlacement> GetDesktopPlacement() override { return screen; }
  int ShellExecuteA(const std::string& verb, const std::string& file) override;

 private:
  void AnswerReport(forms::Form& form);
};

// Prints a box readably in a failing test.
void PrintTo(const ScriptedDesktop::Box& box, std::ostream* out);

}  // namespace mirelo::testing
