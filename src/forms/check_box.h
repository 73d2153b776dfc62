#pragma once

#include <string>

#include "forms/control.h"
#include "forms/control_visitor.h"

namespace mirelo::forms {

// A box that is ticked (1) or not (0).
class CheckBox : public Control {
 public:
  CheckBox(forms::Form& form, std::string name, Control* parent, std::string caption);
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  const std::string& Caption() const { return caption_; }

  int Value() const { return value_; }
  // 0 or 1; error 380 ("Invalid property value") for another number. Raises Click when it changes.
  void Value(int value);

  Event<> Click;

  void UserClick();

 private:
  std::string caption_;
  int value_ = 0;
};

}  // namespace mirelo::forms
