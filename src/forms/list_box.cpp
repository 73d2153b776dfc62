#include "forms/list_box.h"

#include <utility>

#include "automation/runtime_error.h"

namespace mirelo::forms {

void ListBox::ListIndex(std::int32_t index) {
  if (index != -1 && !items_.Has(index)) throw Errors::InvalidPropertyValue();
  Set(index_, index);
  Click.Raise();
}

void ListBox::AddItem(std::string text, std::int32_t index) {
  const std::int32_t place = items_.Insert(std::move(text), index);
  if (index_ >= place) ++index_;
  Appearance.Raise();
}

void ListBox::RemoveItem(std::int32_t index) {
  items_.Remove(index);
  if (index_ == index) {
    index_ = -1;
  } else if (index_ > index) {
    --index_;
  }
  Appearance.Raise();
}

void ListBox::Clear() {
  items_.Clear();
  index_ = -1;
  Appearance.Raise();
}

void ListBox::UserSelect(std::int32_t index) {
  if (!IsUsable() || !items_.Has(index)) return;
  SetFocus();
  ListIndex(index);
}

void ListBox::UserDoubleClick(std::int32_t index) {
  if (!IsUsable() || !items_.Has(index)) return;
  UserSelect(index);
  DblClick.Raise();
}

}  // namespace mirelo::forms
