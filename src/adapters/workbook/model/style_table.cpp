#include "adapters/workbook/model/style_table.h"

#include "adapters/workbook/rules.h"
#include "spreadsheet/format_code.h"

namespace mirelo::workbook {

StyleTable::StyleTable(const Style& default_style) { Intern(default_style); }

StyleId StyleTable::Intern(const Style& style) {
  const std::size_t hash = Hash(style);
  const auto [first, last] = by_hash_.equal_range(hash);
  for (auto known = first; known != last; ++known) {
    if (entries_[known->second].style == style) return known->second;
  }
  const auto id = static_cast<StyleId>(entries_.size());
  entries_.push_back({style, KindOfFormat(style.number_format)});
  by_hash_.emplace(hash, id);
  return id;
}

}  // namespace mirelo::workbook
