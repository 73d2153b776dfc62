#pragma once

#include <cstdint>

#include "forms/control.h"
#include "forms/control_visitor.h"

namespace mirelo::forms {

// A vertical scroll bar. Its top stands for Min and its foot for Max, and Min may lie above Max: the arrow up
// then raises the value.
class ScrollBar : public Control {
 public:
  ScrollBar(forms::Form& form, std::string name, Control* parent, std::int32_t min, std::int32_t max);
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  std::int32_t Min() const { return min_; }
  std::int32_t Max() const { return max_; }

  std::int32_t Value() const { return value_; }
  // Raises Change when it changes; error 380 for a value that does not lie between Min and Max.
  void Value(std::int32_t value);

  Event<> Change;

  // One step towards the top, towards the foot; at the end nothing happens.
  void UserStepUp() { UserStep(min_); }
  void UserStepDown() { UserStep(max_); }
  void UserDrag(std::int32_t value);

 private:
  void UserStep(std::int32_t towards);

  std::int32_t min_;
  std::int32_t max_;
  std::int32_t value_;
};

}  // namespace mirelo::forms
