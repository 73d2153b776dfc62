#pragma once

#include <string>
#include <string_view>

namespace mirelo {

// A comma list while it grows: it ends in a comma, which is cut off at the end. An empty list stays empty.
inline void AppendName(std::string& list, std::string_view name) { list.append(name).push_back(','); }

inline void CutLastComma(std::string& list) {
  if (!list.empty()) list.pop_back();
}

}  // namespace mirelo
