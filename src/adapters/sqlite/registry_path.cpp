#include "adapters/sqlite/registry_path.h"

#include <cstdlib>

#include "automation/runtime_error.h"

namespace mirelo::sqlite {

namespace {

// An absolute folder that a variable of the environment names; empty otherwise.
std::filesystem::path FolderFrom(const char* variable) {
  const char* value = std::getenv(variable);
  if (value == nullptr) return {};
  std::filesystem::path folder(value);
  return folder.is_absolute() ? folder : std::filesystem::path();
}

}  // namespace

std::filesystem::path DefaultRegistryPath() {
  std::filesystem::path data = FolderFrom("XDG_DATA_HOME");
  if (data.empty()) {
    const std::filesystem::path home = FolderFrom("HOME");
    if (home.empty()) {
      throw RuntimeError(
          75, "No folder for the settings: neither XDG_DATA_HOME nor HOME names one. Set one of them.",
          "Mirelo.SqliteRegistry");
    }
    data = home / ".local" / "share";
  }
  return data / "mirelo" / "registry.db";
}

}  // namespace mirelo::sqlite
