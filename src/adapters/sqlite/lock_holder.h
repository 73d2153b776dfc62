#pragma once

#include <string>

#include "adapters/sqlite/database.h"

namespace mirelo::sqlite {

// Who keeps others from writing to the database, in words to stand behind "locked by": "process 4711
// (backup)", or "another program" where the system does not tell.
std::string LockHolder(const Database& database);

}  // namespace mirelo::sqlite
