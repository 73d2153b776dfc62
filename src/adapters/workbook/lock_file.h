#pragma once

#include <filesystem>
#include <string>

#include "adapters/proc/descriptor.h"

namespace mirelo::workbook {

// The lock on a workbook's file: a hidden file beside it with a lock of flock(2), which ends with the last
// process that has it open. It holds the number of its process, for the messages of others.
class LockFile {
 public:
  // Takes the lock on `target`. Errors as FileHold.
  explicit LockFile(const std::filesystem::path& target);
  // Removes the file.
  ~LockFile();
  LockFile(const LockFile&) = delete;
  LockFile& operator=(const LockFile&) = delete;

  // False where the file system knows no locks.
  bool IsLocked() const { return descriptor_.IsOpen(); }
  int Number() const { return descriptor_.number(); }
  // Whether others would come upon it: not when somebody has removed the file.
  bool IsStanding() const;
  // Takes the lock again where it does not stand any more, so that it keeps others out as before. Errors as
  // at first; it is as it was then.
  void TakeAgain();

 private:
  proc::Descriptor Take() const;

  std::filesystem::path target_;
  std::filesystem::path path_;
  proc::Descriptor descriptor_;
};

// Opens a file that exists so that it can be locked; an empty descriptor when it cannot be opened. It is
// opened for writing wherever that is allowed, since network file systems give no exclusive lock to a reader.
proc::Descriptor OpenToLock(const std::filesystem::path& file);

// Opens and locks a lock file that a killed process has left. An empty descriptor when there is none, or when
// a process has it.
proc::Descriptor DeadLock(const std::filesystem::path& lock);

}  // namespace mirelo::workbook
