#include "forms/check_box.h"

#include <utility>

#include "automation/runtime_error.h"

namespace mirelo::forms {

CheckBox::CheckBox(forms::Form& form, std::string name, Control* parent, std::string caption)
    : Control(form, std::move(name), parent), caption_(std::move(caption)) {}

void CheckBox::Value(int value) {
  if (value != 0 && value != 1) throw Errors::InvalidPropertyValue();
  if (Set(value_, value)) Click.Raise();
}

void CheckBox::UserClick() {
  if (!IsUsable()) return;
  SetFocus();
  Value(1 - value_);
}

}  // namespace mirelo::forms
