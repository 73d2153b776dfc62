#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <unordered_map>

#include "adapters/workbook/rules.h"
#include "spreadsheet/format_code.h"
#include "spreadsheet/style.h"

namespace mirelo::workbook {

using StyleId = std::uint32_t;
inline constexpr StyleId kDefaultStyle = 0;  // that of cells which nobody formatted

// The styles of a workbook, each stored once and known by its id.
class StyleTable {
 public:
  explicit StyleTable(const Style& default_style = {});

  // Ids and references stay good.
  StyleId Intern(const Style& style);
  const Style& Get(StyleId id) const { return entries_[id].style; }
  FormatKind Kind(StyleId id) const { return entries_[id].kind; }
  std::size_t Count() const { return entries_.size(); }

 private:
  struct Entry {
    Style style;
    FormatKind kind;
  };
  std::deque<Entry> entries_;
  std::unordered_multimap<std::size_t, StyleId> by_hash_;
};

// Applies one change to styles, to each style only once: for a change that runs over many cells.
template <class Change>
class StyleChange {
 public:
  StyleChange(StyleTable& table, Change change) : table_(table), change_(std::move(change)) {}

  StyleId operator()(StyleId id) {
    const auto [known, is_new] = derived_.try_emplace(id);
    if (is_new) {
      Style style = table_.Get(id);
      change_(style);
      known->second = table_.Intern(style);
    }
    return known->second;
  }

 private:
  StyleTable& table_;
  Change change_;
  std::unordered_map<StyleId, StyleId> derived_;
};

}  // namespace mirelo::workbook
