#include "person/list_entry.h"

#include "automation/text.h"

namespace mirelo {

std::optional<std::size_t> FindEntry(const std::vector<std::string>& entries, const std::string& wanted) {
  if (wanted.empty()) return std::nullopt;
  std::optional<std::size_t> holding;
  int count = 0;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (EqualText(Trim(entries[i]), Trim(wanted))) return i;
    if (InStr(1, entries[i], wanted, Compare::Text) == 0) continue;
    holding = i;
    ++count;
  }
  return count == 1 ? holding : std::nullopt;
}

}  // namespace mirelo
