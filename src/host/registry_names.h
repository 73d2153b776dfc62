#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo::host {

// What holds for names of keys and values in every registry.

// In bytes, without terminator. A longer name is kInvalidParameter.
constexpr std::size_t kLongestKeyName = 255;
constexpr std::size_t kLongestValueName = 16383;

// A name as a call sees it: up to its first NUL, since the calls take terminated strings.
std::string_view TerminatedName(const std::string& name);

// The form in which names that differ only in case are the same: the letters of the ANSI code page as
// capitals, as far as it has the capital.
std::string FoldName(std::string_view name);

// The names along a path from the top down. Backslashes at the ends or doubled separate nothing: "A\\B\" is
// A, B. The views live as long as `path`.
std::vector<std::string_view> SplitPath(std::string_view path);

// Whether one of the names of a path, as a call gives it, is longer than a key's may be.
bool HasTooLongName(const std::string& path);

}  // namespace mirelo::host
