#pragma once

#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

namespace mirelo::proc {

// A lock to look for: one for writing that another process may have on the file.
struct SoughtLock {
  enum class Kind {
    Records,  // of fcntl(2)
    Whole,    // of flock(2)
  };

  std::filesystem::path file;
  Kind kind = Kind::Whole;
  // Locks of records count only where they begin before this byte.
  std::uint64_t before = std::numeric_limits<std::uint64_t>::max();
};

// Which other process has one of these locks, in words to stand behind "locked by": "process 4711 (backup)";
// "another program" where the system does not tell, or where it is not sure that the lock is on that file.
// `proc` is the folder in which the system tells of processes.
std::string LockHolder(const std::vector<SoughtLock>& locks, const std::filesystem::path& proc = "/proc");

}  // namespace mirelo::proc
