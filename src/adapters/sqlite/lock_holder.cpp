#include "adapters/sqlite/lock_holder.h"

#include <cstdint>

#include "adapters/proc/lock_holder.h"

namespace mirelo::sqlite {

namespace {

using Kind = proc::SoughtLock::Kind;

// Where SQLite locks the index of its log to write, to empty the log and to repair the index. What lies
// behind these bytes are marks of readers.
constexpr std::uint64_t kFirstReaderMark = 123;

}  // namespace

std::string LockHolder(const Database& database) {
  return proc::LockHolder(
      {{.file = database.FilePath(), .kind = Kind::Records},
       {.file = database.LogIndexPath(), .kind = Kind::Records, .before = kFirstReaderMark}});
}

}  // namespace mirelo::sqlite
