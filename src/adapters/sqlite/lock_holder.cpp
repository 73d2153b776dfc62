#include "adapters/sqlite/lock_holder.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <optional>
#include <sstream>

namespace mirelo::sqlite {

namespace {

// Where SQLite locks the index of its log to write, to empty the log and to repair the index. What lies
// behind these bytes are marks of readers.
constexpr std::uint64_t kFirstReaderMark = 123;

// A lock as /proc/locks tells of it: "1: POSIX  ADVISORY  WRITE 4711 fe:00:10952931 120 120". A lock that is
// only waited for has "->" behind the number.
struct WriteLock {
  pid_t holder = 0;
  std::string file;  // device and inode
  std::uint64_t first = 0;
};

std::optional<WriteLock> ReadLock(const std::string& line) {
  std::istringstream words(line);
  std::string number;
  std::string family;
  std::string force;
  std::string kind;
  WriteLock lock;
  if (!(words >> number >> family >> force >> kind >> lock.holder >> lock.file >> lock.first)) return {};
  if (family != "POSIX" || kind != "WRITE") return {};
  return lock;
}

// As /proc/locks names it; empty when there is no such file.
std::string DeviceAndInode(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return {};
  char text[64];
  std::snprintf(text, sizeof text, "%02x:%02x:%llu", major(status.st_dev), minor(status.st_dev),
                static_cast<unsigned long long>(status.st_ino));
  return text;
}

std::string Name(pid_t process) {
  std::string name;
  std::ifstream file("/proc/" + std::to_string(process) + "/comm");
  std::getline(file, name);
  return name;
}

}  // namespace

std::string LockHolder(const Database& database) {
  const std::string file = DeviceAndInode(database.FilePath());
  const std::string index = DeviceAndInode(database.LogIndexPath());
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);) {
    const auto lock = ReadLock(line);
    // A process of another container is told without its number.
    if (!lock || lock->holder <= 0 || lock->holder == ::getpid()) continue;
    if (lock->file != file && (lock->file != index || lock->first >= kFirstReaderMark)) continue;
    const std::string name = Name(lock->holder);
    return "process " + std::to_string(lock->holder) + (name.empty() ? "" : " (" + name + ")");
  }
  return "another program";
}

}  // namespace mirelo::sqlite
