#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "adapters/workbook/file_stamp.h"
#include "automation/runtime_error.h"

namespace mirelo::workbook {

// The whole file. Error 53 when there is none, 75 when it cannot be read or is no regular file, 1004 when it
// is larger than `most` bytes.
std::vector<char> ReadWholeFile(const std::filesystem::path& file, std::uint64_t most);

// Writes the whole of a file that is there. Error 61 when the disk is full, 75 for other failures.
void WriteWholeFile(const std::filesystem::path& file, const std::vector<char>& bytes);

// Replaces `file` (a symbolic link's target, where it is one) as a whole. write(path) makes the new contents:
// the path is that of a new file in a folder of its own beside `file`; write may open it as often as it
// likes, and put helper files into the folder. When the new file is on the disk, it takes the place of the
// old one at once, with the old one's permissions and owner. When anything fails, what write raises included,
// the old file is as it was and the new one is gone. This process has the hold meanwhile (see FileHold). The
// result is the new file's stamp. Error 61 when the disk is full, 70 when another process or program has the
// file, 75 for other failures of the file system.
//
// With `known`, a file is replaced only while that is its stamp: one that another program has changed, or has
// made, raises host::ChangedMeanwhile, also when that comes to light only at the end. One that is gone is
// made anew. `placing` is called with the result right before the new file takes its place: a caller in
// another process, who may never hear of the end, can tell by the stamp which file stands there.
using Placing = std::function<void(const FileStamp&)>;
FileStamp ReplaceFile(const std::filesystem::path& file,
                      const std::function<void(const std::filesystem::path&)>& write,
                      const std::optional<FileStamp>& known = std::nullopt, const Placing& placing = {});

// Raises the error that ReplaceFile would raise, as far as that can be told beforehand.
void RequireReplaceable(const std::filesystem::path& file);

}  // namespace mirelo::workbook
