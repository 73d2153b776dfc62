#include "support/temp_directory.h"

#include <random>
#include <string>
#include <system_error>

namespace mirelo::testing {

TempDirectory::TempDirectory() {
  // Many programs of tests make some at the same time, so a name that is taken is followed by another.
  std::random_device chance;
  do {
    path_ = std::filesystem::temp_directory_path() / ("mirelo-test-" + std::to_string(chance()));
  } while (!std::filesystem::create_directory(path_));
  std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
}

TempDirectory::~TempDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace mirelo::testing
