#include "host/registry_names.h"

#include <algorithm>
#include <array>

namespace mirelo::host {

namespace {

// Windows-1252, byte to byte. The multiplication and division signs stand among the letters and are none; the
// small sharp s, the micro sign and the florin have no capital on the page.
constexpr std::array<char, 256> MakeCapitals() {
  std::array<char, 256> capitals{};
  for (int byte = 0; byte < 256; ++byte) {
    int capital = byte;
    if (byte >= 'a' && byte <= 'z') capital = byte - 0x20;
    if (byte >= 0xE0 && byte <= 0xFE && byte != 0xF7) capital = byte - 0x20;
    if (byte == 0x9A || byte == 0x9C || byte == 0x9E) capital = byte - 0x10;
    if (byte == 0xFF) capital = 0x9F;
    capitals[static_cast<std::size_t>(byte)] = static_cast<char>(capital);
  }
  return capitals;
}

constexpr std::array<char, 256> kCapitals = MakeCapitals();

}  // namespace

std::string_view TerminatedName(const std::string& name) { return name.c_str(); }

std::string FoldName(std::string_view name) {
  std::string folded(name);
  for (char& byte : folded) byte = kCapitals[static_cast<unsigned char>(byte)];
  return folded;
}

std::vector<std::string_view> SplitPath(std::string_view path) {
  std::vector<std::string_view> names;
  std::size_t begin = 0;
  while (begin < path.size()) {
    const std::size_t end = std::min(path.find('\\', begin), path.size());
    if (end > begin) names.push_back(path.substr(begin, end - begin));
    begin = end + 1;
  }
  return names;
}

bool HasTooLongName(const std::string& path) {
  const auto names = SplitPath(TerminatedName(path));
  return std::any_of(names.begin(), names.end(),
                     [](std::string_view name) { return name.size() > kLongestKeyName; });
}

}  // namespace mirelo::host
