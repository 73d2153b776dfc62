#pragma once

#include <filesystem>

namespace mirelo::sqlite {

// The user's registry: $XDG_DATA_HOME/mirelo/registry.db, or $HOME/.local/share/mirelo/registry.db when the
// first is not set or is no absolute path. Error 75 when neither tells a folder.
std::filesystem::path DefaultRegistryPath();

}  // namespace mirelo::sqlite
