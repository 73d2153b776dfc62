#include "app/temporary_folder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <system_error>

#include "automation/runtime_error.h"

namespace mirelo::app {

TemporaryFolder::TemporaryFolder() {
  std::string pattern = std::filesystem::temp_directory_path() / "mirelo-XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) {
    throw RuntimeError(75, "Cannot make the temporary folder " + pattern + ": " + std::strerror(errno));
  }
  path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace mirelo::app
