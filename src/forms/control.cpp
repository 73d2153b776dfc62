#include "forms/control.h"

#include <utility>

#include "automation/runtime_error.h"
#include "forms/form.h"

namespace mirelo::forms {

Control::Control(forms::Form& form, std::string name, Control* parent)
    : form_(form), name_(std::move(name)), parent_(parent) {
  form_.Register(*this);
  if (parent_ != nullptr) parent_->children_.push_back(this);
}

void Control::SetFocus() {
  for (const Control* control = this; control != nullptr; control = control->parent_) {
    if (!control->enabled_ || !control->visible_) throw Errors::InvalidProcedureCall();
  }
  form_.ActiveControl(this);
}

bool Control::HasFocus() const { return form_.ActiveControl() == this; }

bool Control::IsUsable() const {
  const Form* on_top = ActiveForm();
  if (on_top != nullptr && on_top != &form_) return false;
  for (const Control* control = this; control != nullptr; control = control->parent_) {
    if (!control->enabled_ || !control->visible_) return false;
    if (control->parent_ != nullptr && !control->parent_->Shows(*control)) return false;
  }
  return true;
}

}  // namespace mirelo::forms
