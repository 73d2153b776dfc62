#include "person/attended_desktop.h"

#include <utility>

#include "forms/form.h"

namespace mirelo {

void AttendedDesktop::Attend(const std::string& form, std::function<void(forms::Form& form)> acts) {
  attended_[form] = std::move(acts);
}

host::Desktop::Answer AttendedDesktop::MessageBox(const std::string& text, int style,
                                                  const std::string& title) {
  ++messages_;
  return ConsoleDesktop::MessageBox(text, style, title);
}

void AttendedDesktop::ShowModal(forms::Form& form) {
  const auto acts = attended_.find(form.Name());
  if (acts == attended_.end()) {
    ++unattended_;
    return ConsoleDesktop::ShowModal(form);
  }
  if (forms::ActiveForm() == nullptr) unattended_ = 0;
  forms::ShowModal(form, [&](const std::function<bool()>& ended) {
    acts->second(form);
    if (!ended()) form.Close();
  });
}

}  // namespace mirelo
