#include "forms/scroll_bar.h"

#include <algorithm>
#include <utility>

#include "automation/runtime_error.h"

namespace mirelo::forms {

ScrollBar::ScrollBar(forms::Form& form, std::string name, Control* parent, std::int32_t min, std::int32_t max)
    : Control(form, std::move(name), parent), min_(min), max_(max), value_(std::min(min, max)) {}

void ScrollBar::Value(std::int32_t value) {
  if (value < std::min(min_, max_) || value > std::max(min_, max_)) throw Errors::InvalidPropertyValue();
  if (Set(value_, value)) Change.Raise();
}

void ScrollBar::UserDrag(std::int32_t value) {
  if (!IsUsable()) return;
  Value(std::clamp(value, std::min(min_, max_), std::max(min_, max_)));
}

void ScrollBar::UserStep(std::int32_t towards) {
  if (value_ == towards) return;
  UserDrag(value_ < towards ? value_ + 1 : value_ - 1);
}

}  // namespace mirelo::forms
