#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "adapters/sqlite/database.h"

namespace mirelo::sqlite {

// Opens the registry's file, made with its folders if absent, for its owner only (0600, folders 0700), and
// sees that it is one: whole, of this program and of a layout that this program knows. A file that is none
// stays as it is, mode and all.
//
// Errors name the file: 75 when it cannot be made, opened or locked in time, 321 when it is damaged,
// something else or of a newer layout.
Database OpenRegistryFile(const std::filesystem::path& path, std::chrono::milliseconds busy_timeout);

// What went wrong in a call to the database that gave the failure code `result`: a sentence that names the
// file.
std::string WhyRefused(const Database& database, int result);

// Error 321, the file is damaged: a statement that the layout allows cannot be prepared.
Statement PrepareForLayout(Database& database, const char* sql);

}  // namespace mirelo::sqlite
