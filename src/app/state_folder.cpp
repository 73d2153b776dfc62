#include "app/state_folder.h"

#include <cstdlib>

namespace mirelo::app {

namespace fs = std::filesystem;

namespace {

fs::path FolderFrom(const char* variable) {
  const char* value = std::getenv(variable);
  fs::path folder = value == nullptr ? "" : value;
  return folder.is_absolute() ? folder : fs::path();
}

}  // namespace

fs::path StateFolder() {
  if (const fs::path state = FolderFrom("XDG_STATE_HOME"); !state.empty()) return state / "mirelo";
  const fs::path home = FolderFrom("HOME");
  return home.empty() ? fs::path() : home / ".local" / "state" / "mirelo";
}

}  // namespace mirelo::app
