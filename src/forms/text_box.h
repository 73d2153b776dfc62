#pragma once

#include <string>
#include <string_view>

#include "forms/control.h"
#include "forms/control_visitor.h"

namespace mirelo::forms {

// A box to type text into.
class TextBox : public Control {
 public:
  TextBox(forms::Form& form, std::string name, Control* parent, std::string text = "");
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  const std::string& Text() const { return text_; }
  // Raises Change when it changes.
  void Text(std::string text);

  // Several lines with a scroll bar; and a text that can be read and copied but not edited.
  bool MultiLine() const { return multi_line_; }
  void MultiLine(bool multi_line) { Set(multi_line_, multi_line); }
  bool Locked() const { return locked_; }
  void Locked(bool locked) { Set(locked_, locked); }

  Event<> Change;

  // The person edits the text so that it now reads `text`.
  void UserEdit(std::string text);
  // The person types these characters behind the text, one by one.
  void UserType(std::string_view characters);

 private:
  std::string text_;
  bool multi_line_ = false;
  bool locked_ = false;
};

}  // namespace mirelo::forms
