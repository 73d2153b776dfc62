#pragma once

#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

namespace mirelo::proc {

// A lock for writing that another process may have on a file.
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

// Which other process has one of these locks, in words that go on behind "locked by": "process 4711
// (backup)". "another program" where the system does not tell, or not of that file beyond doubt. `proc` is
// where the system tells of processes.
std::string LockHolder(const std::vector<SoughtLock>& locks, const std::filesystem::path& proc = "/proc");

}  // namespace mirelo::proc
