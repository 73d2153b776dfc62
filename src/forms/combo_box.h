#pragma once

#include <cstdint>
#include <string>

#include "forms/control.h"
#include "forms/control_visitor.h"
#include "forms/item_list.h"

namespace mirelo::forms {

// A text with a list to choose it from. A drop-down takes any text; a drop-down list only its entries.
class ComboBox : public Control {
 public:
  enum class Style { DropDown, DropDownList };

  ComboBox(forms::Form& form, std::string name, Control* parent, Style style = Style::DropDown,
           bool sorted = false);
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  forms::ComboBox::Style ComboStyle() const { return style_; }
  std::int32_t ListCount() const { return items_.Count(); }
  const std::vector<std::string>& Items() const { return items_.Items(); }
  // Error 381 outside 0 to ListCount() - 1.
  const std::string& List(std::int32_t index) const { return items_.At(index); }

  const std::string& Text() const { return text_; }
  // Raises Change when it changes. In a drop-down list error 383 ("'Text' property is read-only") for a text
  // that is no entry.
  void Text(std::string text);

  // The index of the entry that equals the text exactly; -1 for a text of the person's own.
  std::int32_t ListIndex() const;
  // Shows this entry's text, and raises Change and then Click when that changes it; -1 empties the text.
  // Error 380 for an index that the list does not have.
  void ListIndex(std::int32_t index);

  void AddItem(std::string text, std::int32_t index = -1);
  void RemoveItem(std::int32_t index);
  // Empties the list and the text, raising nothing.
  void Clear();

  Event<> Change;
  Event<> Click;

  void UserEdit(std::string text);
  void UserChoose(std::int32_t index);

 private:
  Style style_;
  ItemList items_;
  std::string text_;
};

}  // namespace mirelo::forms
