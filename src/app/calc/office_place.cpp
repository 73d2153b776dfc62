#include "app/calc/office_place.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <system_error>

#include "automation/runtime_error.h"
#include "automation/text.h"

namespace mirelo::app {

namespace {

namespace fs = std::filesystem;

constexpr const char* kDebiansFolder = "/usr/lib/libreoffice/program";
constexpr const char* kToInstall = "Install it: sudo apt-get install libreoffice-calc";

bool IsOnDisk(const fs::path& file) {
  std::error_code ignored;
  return fs::exists(file, ignored);
}

// What stands in PATH is a link into the office's own folder.
std::optional<fs::path> FolderInPath() {
  const char* const path = std::getenv("PATH");
  for (const std::string& folder : Split(path == nullptr ? "" : path, ":")) {
    if (folder.empty()) continue;
    std::error_code is_none;
    const fs::path program = fs::canonical(fs::path(folder) / "soffice", is_none);
    if (!is_none && IsOnDisk(program.parent_path() / "soffice.bin")) return program.parent_path();
  }
  return std::nullopt;
}

}  // namespace

OfficePlace FindOffice() {
  const fs::path programs = FolderInPath().value_or(kDebiansFolder);
  if (!IsOnDisk(programs / "soffice.bin"))
    throw RuntimeError(53, std::string("LibreOffice is not installed. ") + kToInstall);
  if (!IsOnDisk(programs / "libsclo.so"))
    throw RuntimeError(53, std::string("LibreOffice is installed without Calc. ") + kToInstall);
  return {programs, programs.parent_path() / "share" / "extensions"};
}

}  // namespace mirelo::app
