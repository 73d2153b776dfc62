#pragma once

#include <string>
#include <string_view>

namespace mirelo {

// Two steps to build a list with commas between its names: AppendName appends a name and a comma,
// CutLastComma takes the last comma off when all names are there. An empty list stays empty.
inline void AppendName(std::string& list, std::string_view name) { list.append(name).push_back(','); }

inline void CutLastComma(std::string& list) {
  if (!list.empty()) list.pop_back();
}

}  // namespace mirelo
