#include "support/temp_directory.h"

#include <stdlib.h>

#include <cerrno>
#include <string>
#include <system_error>

namespace mirelo::testing {

TempDirectory::TempDirectory() {
  std::string pattern = (std::filesystem::temp_directory_path() / "mirelo-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::filesystem::filesystem_error("mkdtemp", pattern,
                                            std::error_code(errno, std::generic_category()));
  }
  path_ = pattern;
}

TempDirectory::~TempDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace mirelo::testing
