#include "app/temporary_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <string_view>
#include <system_error>

#include "automation/runtime_error.h"

namespace mirelo::app {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFolderStart = "mirelo-day-";
constexpr std::string_view kFolderRest = "XXXXXX";

// One that is new may be on its way to its lock.
constexpr std::time_t kNewFor = 60;  // seconds

// The folder itself is not locked: who keeps something in it may lock that.
proc::Descriptor OpenLockIn(const fs::path& folder) {
  return proc::Descriptor(
      ::open((folder / "alive").c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0600));
}

bool IsOldAndOwn(const fs::path& folder) {
  struct stat status {};
  return ::lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() &&
         status.st_mtime < std::time(nullptr) - kNewFor;
}

void RemoveIfLeft(const fs::path& folder) {
  if (!IsOldAndOwn(folder)) return;
  const proc::Descriptor lock = OpenLockIn(folder);
  if (!lock.IsOpen()) return;
  std::error_code ignored;
  if (::flock(lock.number(), LOCK_EX | LOCK_NB) == 0) fs::remove_all(folder, ignored);
}

void RemoveLeftFolders(const fs::path& below) {
  std::error_code error;
  for (fs::directory_iterator entry(below, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (name.starts_with(kFolderStart) && name.size() == kFolderStart.size() + kFolderRest.size())
      RemoveIfLeft(entry->path());
  }
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
  const fs::path below = fs::temp_directory_path();
  RemoveLeftFolders(below);
  std::string pattern = below / std::string(kFolderStart).append(kFolderRest);
  if (::mkdtemp(pattern.data()) == nullptr) {
    throw RuntimeError(75, "Cannot make the temporary folder " + pattern + ": " + std::strerror(errno));
  }
  path_ = pattern;
  lock_ = OpenLockIn(path_);
  if (lock_.IsOpen()) ::flock(lock_.number(), LOCK_EX | LOCK_NB);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

}  // namespace mirelo::app
