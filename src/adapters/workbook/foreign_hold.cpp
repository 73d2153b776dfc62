#include "adapters/workbook/foreign_hold.h"

#include <fcntl.h>
#include <sys/file.h>

#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

#include "adapters/proc/descriptor.h"
#include "adapters/workbook/lock_file.h"

namespace mirelo::workbook {

namespace {

// How spreadsheet programs name the file that they keep beside one that they have open.
struct LockFileName {
  std::string_view before;
  std::string_view behind;
};
constexpr std::array kLockFileNames{LockFileName{".~lock.", "#"}, LockFileName{"~$", ""}};

std::optional<std::filesystem::path> LockFileOf(const std::filesystem::path& file) {
  for (const LockFileName& name : kLockFileNames) {
    const auto lock =
        file.parent_path() / std::string(name.before).append(file.filename().string()).append(name.behind);
    std::error_code error;
    if (std::filesystem::exists(lock, error)) return lock;
  }
  return std::nullopt;
}

// Whether a lock of either kind would be refused: those of record locks and those of flock(2) do not see each
// other.
bool IsLocked(const std::filesystem::path& file) {
  const proc::Descriptor descriptor = OpenToLock(file);
  if (!descriptor.IsOpen()) return false;
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  const bool has_records = ::fcntl(descriptor.number(), F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
  const bool has_whole = ::flock(descriptor.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  return has_records || has_whole;
}

}  // namespace

std::optional<std::string> ForeignHold(const std::filesystem::path& file) {
  if (const auto lock = LockFileOf(file)) {
    return "another program has it open; close it there. If none has, delete " + lock->string();
  }
  if (IsLocked(file)) return "another program has locked it; try again when that program is done";
  return std::nullopt;
}

}  // namespace mirelo::workbook
