#include "adapters/sqlite/private_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "automation/runtime_error.h"

namespace mirelo::sqlite {

namespace fs = std::filesystem;

namespace {

constexpr mode_t kOwnersFolder = 0700;
constexpr mode_t kOwnersFile = 0600;
constexpr mode_t kGroupAndOthers = 0077;

// True when the folder is there afterwards; otherwise errno says why not.
bool MakeOneFolder(const fs::path& folder) {
  if (::mkdir(folder.c_str(), kOwnersFolder) != 0) return errno == EEXIST;
  ::chmod(folder.c_str(), kOwnersFolder);
  return true;
}

// As MakeOneFolder, with all folders above.
bool MakeFolders(const fs::path& folder) {
  if (folder.empty() || MakeOneFolder(folder)) return true;
  return errno == ENOENT && MakeFolders(folder.parent_path()) && MakeOneFolder(folder);
}

// As MakeOneFolder, for the file in its folder.
bool MakeOneFile(const fs::path& file) {
  const int descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kOwnersFile);
  if (descriptor < 0) return errno == EEXIST;
  ::fchmod(descriptor, kOwnersFile);
  ::close(descriptor);
  return true;
}

}  // namespace

void MakePrivateFile(const fs::path& file) {
  if (MakeFolders(file.parent_path()) && MakeOneFile(file)) return;
  const std::string why = std::generic_category().message(errno);
  throw RuntimeError(75, "Cannot make the file " + file.string() + ": " + why, "Mirelo.SqliteRegistry");
}

// By its path: opening and closing the file again would drop the locks that this process may hold on it.
void TakeFromGroupAndOthers(const fs::path& file) {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return;
  if ((status.st_mode & kGroupAndOthers) != 0) ::chmod(file.c_str(), kOwnersFile);
}

}  // namespace mirelo::sqlite
