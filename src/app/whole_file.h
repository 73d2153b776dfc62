#pragma once

#include <filesystem>
#include <string_view>

namespace mirelo::app {

// Who may read a file that was not there before: its owner alone, or whoever the umask lets, as is usual.
enum class NewFile { kPrivate, kUsual };

// Writes a file so that it is never half written: into a new file beside it, which then takes its place, with
// the owner and the mode of the old one. A symbolic link stays, and what it leads to is replaced. A device or
// a pipe stays too and is written into.
//
// What a process that was killed meanwhile has left in a folder is removed by the next call there.
//
// Raises error 75, with the file and the reason as text, when it cannot be written, or an old one may not be;
// that stays as it was then.
void WriteWhole(const std::filesystem::path& file, std::string_view text, NewFile mode = NewFile::kPrivate);

}  // namespace mirelo::app
