#pragma once

#include <filesystem>

namespace mirelo::workbook {

// The file that is written when `file` is: symbolic links are followed to the last one, also to a file that
// is not there yet, so that they go on pointing at it. Error 75 when links lead in a circle, or to a folder
// that is not there.
std::filesystem::path TargetOf(const std::filesystem::path& file);

std::filesystem::path FolderOf(const std::filesystem::path& file);

}  // namespace mirelo::workbook
