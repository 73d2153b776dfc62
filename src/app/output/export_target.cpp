#include "app/output/export_target.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <string>
#include <string_view>
#include <system_error>

#include "adapters/sqlite/export_image.h"
#include "adapters/sqlite/file_kind.h"
#include "automation/runtime_error.h"

namespace mirelo::app {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kBeginningOfWorkbooks = "PK\x03\x04";  // as of all ZIP archives

constexpr std::string_view kBeginningOfJournals = "Number,Arrived,Ticker,";  // of run --also

// Empty for what is no regular file or cannot be read: whoever writes it finds out why.
std::string BeginningOf(const fs::path& file) {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
  const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return {};
  std::array<char, sqlite::kHeaderSize> bytes{};
  const auto count = ::read(descriptor, bytes.data(), bytes.size());
  ::close(descriptor);
  return count > 0 ? std::string(bytes.data(), static_cast<std::size_t>(count)) : std::string();
}

[[noreturn]] void Refuse(const fs::path& file, const std::string& why) {
  throw RuntimeError(Errors::PathFileAccess().Number(),
                     "cannot write " + file.string() + ": " + why + "\nName another file with --output.");
}

bool IsInUse(const fs::path& database) {
  std::error_code ignored;
  return fs::exists(database.string() + "-wal", ignored) ||
         fs::exists(database.string() + "-journal", ignored);
}

}  // namespace

void RequireReplaceable(const fs::path& file, ExportTarget target, const fs::path& source) {
  std::error_code ignored;
  if (fs::equivalent(file, source, ignored)) Refuse(file, "it is the workbook that is to be exported");
  const std::string beginning = BeginningOf(file);
  if (beginning.starts_with(kBeginningOfJournals)) Refuse(file, "quotes stand there that a day has appended");
  if (beginning.starts_with(kBeginningOfWorkbooks)) Refuse(file, "a workbook or an archive stands there");
  switch (sqlite::KindOf(beginning, sqlite::kExportApplicationId)) {
    case sqlite::FileKind::Ours:
      if (target != ExportTarget::Database) Refuse(file, "a database stands there");
      break;
    case sqlite::FileKind::OfOthers:
      Refuse(file, "a database stands there that is none of an export");
    case sqlite::FileKind::NoDatabase:
      if (target == ExportTarget::Database) Refuse(file, "a file stands there that is no database");
      break;
    case sqlite::FileKind::Empty:
      break;
  }
  if (target == ExportTarget::Database && IsInUse(file))
    Refuse(file, "another program has it open, or has left it in a crash");
}

}  // namespace mirelo::app
