#include "support/built_program.h"

#include <filesystem>

namespace mirelo::testing {

std::string BuiltProgram(const std::string& name) {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path() / name;
}

}  // namespace mirelo::testing
