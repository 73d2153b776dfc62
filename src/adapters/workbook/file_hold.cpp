#include "adapters/workbook/file_hold.h"

#include <sys/stat.h>

#include <map>
#include <string>

#include "adapters/workbook/file_errors.h"
#include "adapters/workbook/file_target.h"
#include "adapters/workbook/leftovers.h"
#include "adapters/workbook/lock_file.h"

namespace mirelo::workbook {

namespace fs = std::filesystem;

namespace {

void RequireNoOtherKind(const fs::path& target) {
  struct stat status {};
  if (::stat(target.c_str(), &status) != 0 || S_ISREG(status.st_mode)) return;
  throw NoRegularFile("Cannot save " + target.string(), status.st_mode);
}

std::map<fs::path, std::weak_ptr<LockFile>>& LocksOfThisProcess() {
  static std::map<fs::path, std::weak_ptr<LockFile>> locks;
  return locks;
}

// The lock of this process on the target, which all its holds share. Where somebody has removed the file of
// the lock meanwhile, the older holds have the new one too.
std::shared_ptr<LockFile> LockOn(const fs::path& target) {
  auto& locks = LocksOfThisProcess();
  std::erase_if(locks, [](const auto& lock) { return lock.second.expired(); });
  std::weak_ptr<LockFile>& known = locks[target];
  std::shared_ptr<LockFile> lock = known.lock();
  if (lock != nullptr && lock->IsStanding()) return lock;
  if (lock == nullptr) {
    known = lock = std::make_shared<LockFile>(target);
  } else {
    lock->TakeAgain();
  }
  if (lock->IsLocked()) RemoveLeftovers(target);
  return lock;
}

}  // namespace

FileHold::FileHold(const fs::path& file) : target_(TargetOf(file)) {
  RequireNoOtherKind(target_);
  lock_ = LockOn(target_);
}

bool FileHold::IsLocked() const { return lock_->IsLocked(); }

void FileHold::TakeAgain() {
  for (const auto& [target, known] : LocksOfThisProcess()) {
    try {
      if (const std::shared_ptr<LockFile> lock = known.lock()) lock->TakeAgain();
    } catch (const RuntimeError&) {  // the next save finds it as it is
    }
  }
}

std::vector<int> FileHold::Descriptors() {
  std::vector<int> descriptors;
  for (const auto& [target, known] : LocksOfThisProcess()) {
    const std::shared_ptr<LockFile> lock = known.lock();
    if (lock != nullptr && lock->IsLocked()) descriptors.push_back(lock->Number());
  }
  return descriptors;
}

}  // namespace mirelo::workbook
