#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace mirelo::forms {

// The entries of a list box or a combo box, in the order shown. Indexes start at 0.
class ItemList {
 public:
  // Sorted lists put a new entry at its place in the alphabet, without regard to case, whatever index is
  // asked for.
  explicit ItemList(bool sorted = false) : sorted_(sorted) {}

  std::int32_t Count() const { return static_cast<std::int32_t>(items_.size()); }
  const std::vector<std::string>& Items() const { return items_; }
  bool Has(std::int32_t index) const { return index >= 0 && index < Count(); }
  // Error 381 ("Invalid property array index") outside 0 to Count() - 1.
  const std::string& At(std::int32_t index) const;

  // Inserts before `index` (0 to Count()), at the end for -1; answers the entry's index. Error 5 outside.
  std::int32_t Insert(std::string text, std::int32_t index);
  // Error 5 outside 0 to Count() - 1.
  void Remove(std::int32_t index);
  void Clear() { items_.clear(); }

 private:
  bool sorted_;
  std::vector<std::string> items_;
};

}  // namespace mirelo::forms
