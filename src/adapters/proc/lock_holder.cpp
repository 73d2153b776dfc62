#include "adapters/proc/lock_holder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <fstream>
#include <optional>
#include <sstream>
#include <string_view>
#include <system_error>

namespace mirelo::proc {

namespace {

namespace fs = std::filesystem;

struct Device {
  unsigned major = 0;
  unsigned minor = 0;
  friend bool operator==(const Device&, const Device&) = default;
};

std::optional<std::uint64_t> ParseNumber(std::string_view digits, int base) {
  std::uint64_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [rest, error] = std::from_chars(digits.data(), end, number, base);
  if (error != std::errc() || rest != end) return std::nullopt;
  return number;
}

// "fe:00", or "254:0" where the base is 10.
std::optional<Device> ParseDevice(std::string_view text, int base) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const auto major = ParseNumber(text.substr(0, colon), base);
  const auto minor = ParseNumber(text.substr(colon + 1), base);
  if (!major || !minor) return std::nullopt;
  return Device{static_cast<unsigned>(*major), static_cast<unsigned>(*minor)};
}

// A lock as /proc/locks tells of it: "1: POSIX  ADVISORY  WRITE 4711 fe:00:10952931 120 120". A lock that is
// only waited for has "->" behind the number.
struct WriteLock {
  SoughtLock::Kind kind = SoughtLock::Kind::Whole;
  pid_t holder = 0;
  Device device;
  std::uint64_t inode = 0;
  std::uint64_t first = 0;
};

std::optional<WriteLock> ReadLock(const std::string& line) {
  std::istringstream words(line);
  std::string number;
  std::string family;
  std::string force;
  std::string kind;
  std::string file;
  WriteLock lock;
  if (!(words >> number >> family >> force >> kind >> lock.holder >> file >> lock.first)) return {};
  if ((family != "POSIX" && family != "FLOCK") || kind != "WRITE") return {};
  lock.kind = family == "POSIX" ? SoughtLock::Kind::Records : SoughtLock::Kind::Whole;
  const std::size_t colon = file.rfind(':');
  if (colon == std::string::npos) return {};
  const auto device = ParseDevice(std::string_view(file).substr(0, colon), 16);
  const auto inode = ParseNumber(std::string_view(file).substr(colon + 1), 10);
  if (!device || !inode) return {};
  lock.device = *device;
  lock.inode = *inode;
  return lock;
}

// The device of a mount, from a line such as "36 35 98:0 /from /to rw,noatime ...".
std::optional<Device> DeviceOfMount(std::uint64_t mount, const fs::path& proc) {
  std::ifstream mounts(proc / "self/mountinfo");
  for (std::string line; std::getline(mounts, line);) {
    std::istringstream words(line);
    std::uint64_t id = 0;
    std::uint64_t parent = 0;
    std::string device;
    if (words >> id >> parent >> device && id == mount) return ParseDevice(device, 10);
  }
  return std::nullopt;
}

// What tells a file from all others. Some file systems (btrfs) show files under devices of their own making,
// and the table of locks names the device of the mount.
struct Identity {
  Device device;
  std::optional<Device> mounted;
  std::uint64_t inode = 0;

  bool IsOf(const WriteLock& lock) const {
    return lock.inode == inode && (lock.device == device || lock.device == mounted);
  }
};

// Nothing when there is no such file.
std::optional<Identity> IdentityOf(const fs::path& file, const fs::path& proc) {
  struct statx status {};
  if (::statx(AT_FDCWD, file.c_str(), 0, STATX_INO | STATX_MNT_ID, &status) != 0) return std::nullopt;
  Identity identity{{status.stx_dev_major, status.stx_dev_minor}, {}, status.stx_ino};
  if ((status.stx_mask & STATX_MNT_ID) != 0) identity.mounted = DeviceOfMount(status.stx_mnt_id, proc);
  return identity;
}

// A lock that is looked for, of a file that is there.
struct KnownLock {
  Identity file;
  SoughtLock::Kind kind;
  std::uint64_t before;

  bool Is(const WriteLock& lock) const {
    if (lock.kind != kind || !file.IsOf(lock)) return false;
    return kind == SoughtLock::Kind::Whole || lock.first < before;
  }
};

std::string NameOf(pid_t process, const fs::path& proc) {
  std::string name;
  std::ifstream file(proc / std::to_string(process) / "comm");
  std::getline(file, name);
  return name;
}

}  // namespace

std::string LockHolder(const std::vector<SoughtLock>& locks, const fs::path& proc) {
  std::vector<KnownLock> known;
  for (const SoughtLock& lock : locks) {
    if (const auto file = IdentityOf(lock.file, proc)) known.push_back({*file, lock.kind, lock.before});
  }
  std::ifstream table(proc / "locks");
  for (std::string line; std::getline(table, line);) {
    const auto lock = ReadLock(line);
    // A process of another container is told without its number.
    if (!lock || lock->holder <= 0 || lock->holder == ::getpid()) continue;
    if (std::none_of(known.begin(), known.end(), [&](const KnownLock& each) { return each.Is(*lock); })) {
      continue;
    }
    const std::string name = NameOf(lock->holder, proc);
    return "process " + std::to_string(lock->holder) + (name.empty() ? "" : " (" + name + ")");
  }
  return "another program";
}

}  // namespace mirelo::proc
