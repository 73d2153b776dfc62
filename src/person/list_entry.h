#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace mirelo {

// The entry of a list that somebody names: the one that reads so but for case and blanks around it, else the
// only one that holds the text.
std::optional<std::size_t> FindEntry(const std::vector<std::string>& entries, const std::string& wanted);

}  // namespace mirelo
