#pragma once

#include <functional>
#include <map>
#include <string>

#include "adapters/headless/console_desktop.h"

namespace mirelo {

// A desktop without a display, on which some forms are attended to by a function in place of a person. All
// other forms and boxes are printed and answered as ConsoleDesktop does.
class AttendedDesktop : public headless::ConsoleDesktop {
 public:
  using headless::ConsoleDesktop::ConsoleDesktop;

  // Has `acts` attend to the form of that name: it is called each time the form is shown, when it is filled.
  // A form that is still shown afterwards is closed. What `acts` throws is raised to whoever showed the form.
  void Attend(const std::string& form, std::function<void(forms::Form& form)> acts);

  // How many forms were shown that nobody attends to, since the last attended one was about to be shown with
  // no other below it. They are reports of failures.
  int Unattended() const { return unattended_; }
  // How many message boxes were shown.
  int Messages() const { return messages_; }

  Answer MessageBox(const std::string& text, int style, const std::string& title) override;
  void ShowModal(forms::Form& form) override;

 private:
  std::map<std::string, std::function<void(forms::Form&)>> attended_;
  int unattended_ = 0;
  int messages_ = 0;
};

}  // namespace mirelo
