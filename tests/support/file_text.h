#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace mirelo::testing {

// All of a file's bytes; of one that cannot be read, none.
inline std::string TextOfFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace mirelo::testing
