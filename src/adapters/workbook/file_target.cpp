#include "adapters/workbook/file_target.h"

#include <cerrno>
#include <system_error>

#include "adapters/workbook/file_errors.h"

namespace mirelo::workbook {

namespace fs = std::filesystem;

namespace {

constexpr int kMostLinks = 40;

}  // namespace

fs::path TargetOf(const fs::path& file) {
  const auto fail = [&](int reason) { return FileError("Cannot save " + file.string(), reason); };
  fs::path target = file;
  std::error_code error;
  for (int links = 0; fs::is_symlink(fs::symlink_status(target, error)); ++links) {
    if (links == kMostLinks) throw fail(ELOOP);
    const fs::path next = fs::read_symlink(target, error);
    if (error) throw fail(error.value());
    target = FolderOf(target) / next;
  }
  if (target != file && !fs::exists(FolderOf(target), error))
    throw FileError("Cannot save " + file.string() + ", a link to " + target.string(), ENOENT);
  fs::path plain = fs::weakly_canonical(fs::absolute(target), error);
  if (error) throw fail(error.value());
  return plain;
}

fs::path FolderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

}  // namespace mirelo::workbook
