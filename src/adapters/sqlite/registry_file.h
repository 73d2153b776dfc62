#pragma once

#include <chrono>
#include <filesystem>

#include "adapters/sqlite/database.h"

namespace mirelo::sqlite {

// Opens the registry's file, made with its folders if absent, for its owner only (0600, folders 0700), and
// sees that it is one: whole, of this program and of a layout that this program knows.
//
// Errors name the file: 75 when it cannot be made, opened or locked in time, 321 when it is damaged,
// something else or of a newer layout.
Database OpenRegistryFile(const std::filesystem::path& path, std::chrono::milliseconds busy_timeout);

}  // namespace mirelo::sqlite
