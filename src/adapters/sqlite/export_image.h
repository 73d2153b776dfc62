#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/data_table.h"

namespace mirelo::sqlite {

// What tells a database of exported tables from others, and the version of how these are laid out.
inline constexpr std::int64_t kExportApplicationId = 0x4D724578;  // "MrEx"
inline constexpr std::int64_t kExportVersion = 1;

// The bytes of a database file with these tables and their rows, whose order is that of the row ids. Error 7
// when memory does not suffice, 75 for anything else that SQLite refuses.
std::string ExportImage(const std::vector<host::DataTable>& tables);

}  // namespace mirelo::sqlite
