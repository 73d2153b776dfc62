#include "wire/quiet_desktop.h"

#include <functional>

#include "forms/button.h"
#include "forms/form.h"
#include "forms/text_box.h"

namespace mirelo::wire {

namespace {

forms::Button* AbortOf(const forms::Form& form) {
  for (forms::Control* const control : form.Controls()) {
    auto* const button = dynamic_cast<forms::Button*>(control);
    if (button != nullptr && button->Caption() == "Abort") return button;
  }
  return nullptr;
}

}  // namespace

host::Desktop::Answer QuietDesktop::MessageBox(const std::string& text, int style,
                                               const std::string& /*title*/) {
  words_ = text;
  return MostCarefulAnswer(style);
}

void QuietDesktop::ShowModal(forms::Form& form) {
  forms::ShowModal(form, [&](const std::function<bool()>& ended) {
    words_ = form.Caption();
    for (const forms::Control* const control : form.Controls()) {
      const auto* const box = dynamic_cast<const forms::TextBox*>(control);
      if (box != nullptr && box->MultiLine()) words_ = box->Text();
    }
    if (forms::Button* const abort = AbortOf(form)) abort->UserPress();
    if (!ended()) form.Close();
  });
}

int QuietDesktop::ShellExecuteA(const std::string& /*verb*/, const std::string& /*file*/) {
  return kShellNoProgram;
}

}  // namespace mirelo::wire
