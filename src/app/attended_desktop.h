#pragma once

#include <functional>
#include <map>
#include <string>

#include "adapters/headless/console_desktop.h"

namespace mirelo::app {

// A desktop without a display at which somebody attends to some of the forms. All else that is shown is
// printed and answered as nobody would answer it.
class AttendedDesktop : public headless::ConsoleDesktop {
 public:
  using headless::ConsoleDesktop::ConsoleDesktop;

  // What is done with the form of that name, while it is shown and already filled. A form that is still shown
  // afterwards is closed. What it throws passes for a failure of whoever showed the form.
  void Attend(const std::string& form, std::function<void(forms::Form& form)> acts);

  // How many forms were shown that nobody attends to: reports of failures.
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

}  // namespace mirelo::app
