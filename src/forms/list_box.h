#pragma once

#include <cstdint>
#include <string>

#include "forms/control.h"
#include "forms/control_visitor.h"
#include "forms/item_list.h"

namespace mirelo::forms {

// A list of entries, one of which may be selected.
class ListBox : public Control {
 public:
  using Control::Control;
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  std::int32_t ListCount() const { return items_.Count(); }
  const std::vector<std::string>& Items() const { return items_.Items(); }
  // Error 381 outside 0 to ListCount() - 1.
  const std::string& List(std::int32_t index) const { return items_.At(index); }

  // -1 for no selection. Setting it raises Click as a person's click does, so also when that entry is
  // selected already. Error 380 for an index that the list does not have.
  std::int32_t ListIndex() const { return index_; }
  void ListIndex(std::int32_t index);

  // Inserts before `index`, at the end for -1. The selection stays with its entry. Error 5 for a bad index.
  void AddItem(std::string text, std::int32_t index = -1);
  // Removing the selected entry leaves no selection, and raises nothing. Error 5 for a bad index.
  void RemoveItem(std::int32_t index);
  void Clear();

  Event<> Click;
  Event<> DblClick;

  void UserSelect(std::int32_t index);
  void UserDoubleClick(std::int32_t index);

 private:
  ItemList items_;
  std::int32_t index_ = -1;
};

}  // namespace mirelo::forms
