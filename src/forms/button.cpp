#include "forms/button.h"

#include <utility>

namespace mirelo::forms {

Button::Button(forms::Form& form, std::string name, Control* parent, std::string caption)
    : Control(form, std::move(name), parent), caption_(std::move(caption)) {}

void Button::UserPress() {
  if (!IsUsable()) return;
  SetFocus();
  if (!attendant_) return Click.Raise();
  attendant_([this] { Click.Raise(); });
}

}  // namespace mirelo::forms
