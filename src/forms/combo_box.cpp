#include "forms/combo_box.h"

#include <algorithm>
#include <utility>

#include "automation/runtime_error.h"

namespace mirelo::forms {

ComboBox::ComboBox(forms::Form& form, std::string name, Control* parent, Style style, bool sorted)
    : Control(form, std::move(name), parent), style_(style), items_(sorted) {
  BackColor(kWindowBackground);
}

void ComboBox::Text(std::string text) {
  const auto& entries = items_.Items();
  if (style_ == Style::DropDownList && std::find(entries.begin(), entries.end(), text) == entries.end()) {
    throw RuntimeError(383, "'Text' property is read-only");
  }
  if (Set(text_, std::move(text))) Change.Raise();
}

std::int32_t ComboBox::ListIndex() const {
  const auto& entries = items_.Items();
  const auto entry = std::find(entries.begin(), entries.end(), text_);
  return entry == entries.end() ? -1 : static_cast<std::int32_t>(entry - entries.begin());
}

void ComboBox::ListIndex(std::int32_t index) {
  if (index != -1 && !items_.Has(index)) throw Errors::InvalidPropertyValue();
  if (!Set(text_, index == -1 ? std::string() : items_.At(index))) return;
  Change.Raise();
  Click.Raise();
}

void ComboBox::AddItem(std::string text, std::int32_t index) {
  items_.Insert(std::move(text), index);
  Appearance.Raise();
}

void ComboBox::RemoveItem(std::int32_t index) {
  items_.Remove(index);
  Appearance.Raise();
}

void ComboBox::Clear() {
  items_.Clear();
  text_.clear();
  Appearance.Raise();
}

void ComboBox::UserEdit(std::string text) {
  if (!IsUsable() || style_ == Style::DropDownList) return;
  SetFocus();
  Text(std::move(text));
}

void ComboBox::UserChoose(std::int32_t index) {
  if (!IsUsable() || !items_.Has(index)) return;
  SetFocus();
  ListIndex(index);
}

}  // namespace mirelo::forms
