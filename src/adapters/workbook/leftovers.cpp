#include "adapters/workbook/leftovers.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <vector>

#include "adapters/workbook/companion_names.h"
#include "adapters/workbook/file_target.h"
#include "adapters/workbook/lock_file.h"

namespace mirelo::workbook {

namespace fs = std::filesystem;

namespace {

std::vector<std::string> HiddenNamesIn(const fs::path& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    std::string name = entry->path().filename().string();
    if (name.starts_with('.')) names.push_back(std::move(name));
  }
  return names;
}

// Of a name that may be of several files' the lock of another one says whose it is, perhaps.
bool IsWorkshopOf(const std::string& name, const std::string& file, const std::vector<std::string>& names) {
  const std::vector<std::string> files = FilesOfWorkshop(name);
  const auto is_anothers = [&](const std::string& other) {
    return other != file && std::ranges::find(names, LockNameOf(other)) != names.end();
  };
  return std::ranges::find(files, file) != files.end() && std::ranges::none_of(files, is_anothers);
}

void RemoveWorkshops(const fs::path& folder, const std::vector<std::string>& names, const std::string& file) {
  for (const std::string& name : names) {
    std::error_code ignored;
    if (IsWorkshopOf(name, file, names)) fs::remove_all(folder / name, ignored);
  }
}

}  // namespace

void RemoveLeftovers(const fs::path& target) {
  const fs::path folder = FolderOf(target);
  const std::string own = target.filename().string();
  const std::vector<std::string> names = HiddenNamesIn(folder);
  RemoveWorkshops(folder, names, own);
  for (const std::string& name : names) {
    const auto file = FileOfLock(name);
    if (!file || *file == own) continue;
    const proc::Descriptor lock = DeadLock(folder / name);
    if (!lock.IsOpen()) continue;
    RemoveWorkshops(folder, names, *file);
    std::error_code ignored;
    fs::remove(folder / name, ignored);
  }
}

}  // namespace mirelo::workbook
