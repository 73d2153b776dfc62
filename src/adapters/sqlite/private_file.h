#pragma once

#include <filesystem>

namespace mirelo::sqlite {

// Makes `file`, empty, and the folders above it where they are absent: for their owner alone (0600 and 0700),
// whatever the umask. A file that is there keeps its content and loses what group and others may do with it.
// Error 75, naming what could not be made.
void MakePrivateFile(const std::filesystem::path& file);

}  // namespace mirelo::sqlite
