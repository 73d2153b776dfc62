#pragma once

#include <filesystem>

#include "adapters/proc/descriptor.h"

namespace mirelo::app {

// A new folder of this program's own below the system's temporary folder, removed with all it holds at the
// end. Those of processes that were killed before their end are removed by the next one.
class TemporaryFolder {
 public:
  // Raises error 75 when it cannot be made.
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
  proc::Descriptor lock_;  // on a file in it, by which others see that its process is alive
};

}  // namespace mirelo::app
