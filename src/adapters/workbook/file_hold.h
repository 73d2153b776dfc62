#pragma once

#include <filesystem>
#include <memory>
#include <vector>

namespace mirelo::workbook {

class LockFile;

// The right to save a workbook's file.
//
// One process at a time has it. Whoever will save a workbook later takes it before reading the file, and
// keeps it until the last save; saving takes it for its own time where nobody here holds it. So of two
// processes that work on one file the second one is refused, and neither writes over what the other has
// saved. Reading needs no hold.
//
// - The hold is a lock that the system takes away with its process, however that ends.
// - All names of a file by way of symbolic links are one file. It need not be there yet.
// - The same process may hold a file several times.
// - Where somebody removes its lock, others get the hold until the next save here, which takes it again for
//   all holds of this process, or is refused while another one has it.
// - What a process that was killed has left beside its files in a folder is removed by the next hold there.
// - Where the file system knows no locks, all processes get the hold; IsLocked tells.
//
// Other programs do not know of it; they are looked out for when the file is saved (see ForeignHold).
class FileHold {
 public:
  // Error 70 when another process has the hold, or its lock cannot be taken over; 75 when the file is none
  // that could be saved, its folder cannot be written, or its file system fails; 61 when the disk is full.
  explicit FileHold(const std::filesystem::path& file);

  // The file behind all links.
  const std::filesystem::path& target() const { return target_; }

  // Whether others are kept out: not where the file system knows no locks.
  bool IsLocked() const;

  // The descriptors of all locks that this process has. A forked copy that keeps them open keeps other
  // processes out until it has ended.
  static std::vector<int> Descriptors();
  // Takes locks again whose files somebody has removed. A save does that by itself; this is for a process
  // that forks a copy to save, since a lock that the copy takes would end with it. A lock that cannot be
  // taken again raises nothing here: the save will tell.
  static void TakeAgain();

 private:
  std::filesystem::path target_;
  std::shared_ptr<LockFile> lock_;
};

}  // namespace mirelo::workbook
