#pragma once

#include <filesystem>

namespace mirelo::sqlite {

// Makes `file`, empty, and the folders above it where they are absent: for their owner alone (0600 and 0700),
// whatever the umask. What is there stays as it is. Error 75, naming what could not be made.
void MakePrivateFile(const std::filesystem::path& file);

// Takes away what group and others may do with a file. Nothing happens where it is none or is not ours.
void TakeFromGroupAndOthers(const std::filesystem::path& file);

}  // namespace mirelo::sqlite
