#include "forms/text_box.h"

#include <utility>

#include "automation/text.h"

namespace mirelo::forms {

TextBox::TextBox(forms::Form& form, std::string name, Control* parent, std::string text)
    : Control(form, std::move(name), parent), text_(std::move(text)) {
  BackColor(kWindowBackground);
}

void TextBox::Text(std::string text) {
  if (Set(text_, std::move(text))) Change.Raise();
}

void TextBox::UserEdit(std::string text) {
  if (!IsUsable() || locked_) return;
  SetFocus();
  Text(std::move(text));
}

void TextBox::UserType(std::string_view characters) {
  const auto count = Len(characters);
  for (std::int32_t i = 1; i <= count; ++i) UserEdit(text_ + std::string(Mid(characters, i, 1)));
}

}  // namespace mirelo::forms
