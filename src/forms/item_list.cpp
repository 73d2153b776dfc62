#include "forms/item_list.h"

#include <algorithm>
#include <utility>

#include "automation/runtime_error.h"
#include "automation/text.h"

namespace mirelo::forms {

const std::string& ItemList::At(std::int32_t index) const {
  if (!Has(index)) throw Errors::InvalidPropertyArrayIndex();
  return items_[static_cast<std::size_t>(index)];
}

std::int32_t ItemList::Insert(std::string text, std::int32_t index) {
  if (index < -1 || index > Count()) throw Errors::InvalidProcedureCall();
  auto place = index < 0 ? items_.end() : items_.begin() + index;
  if (sorted_) {
    place = std::upper_bound(items_.begin(), items_.end(), text,
                             [](const auto& a, const auto& b) { return StrComp(a, b, Compare::Text) < 0; });
  }
  place = items_.insert(place, std::move(text));  // the list may have moved: where it begins is asked later
  return static_cast<std::int32_t>(place - items_.begin());
}

void ItemList::Remove(std::int32_t index) {
  if (!Has(index)) throw Errors::InvalidProcedureCall();
  items_.erase(items_.begin() + index);
}

}  // namespace mirelo::forms
