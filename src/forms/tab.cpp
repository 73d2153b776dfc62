#include "forms/tab.h"

#include <utility>

#include "automation/runtime_error.h"
#include "automation/text.h"

namespace mirelo::forms {

Tab::Tab(forms::Form& form, std::string name, Control* parent, const std::string& captions)
    : Control(form, std::move(name), parent), captions_(Split(captions, "|")) {}

void Tab::CurrTab(std::int32_t tab) {
  if (tab < 0 || tab >= static_cast<std::int32_t>(captions_.size())) throw Errors::InvalidPropertyValue();
  if (Set(current_, tab)) Click.Raise();
}

bool Tab::Shows(const Control& child) const {
  const auto& panels = Children();
  const auto current = static_cast<std::size_t>(current_);
  return current < panels.size() && panels[current] == &child;
}

void Tab::UserSelect(std::int32_t tab) {
  if (!IsUsable()) return;
  if (tab == current_) {
    Click.Raise();
  } else {
    CurrTab(tab);
  }
}

}  // namespace mirelo::forms
