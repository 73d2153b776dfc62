#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace mirelo::sodium {

// Files for their owner's eyes only. Errors 75, with the file and the reason as text.

// The content; nothing when there is no such file.
std::optional<std::string> ReadPrivateFile(const std::filesystem::path& file);

// Writes with mode 0600, the folder made with mode 0700 if absent: into a new file beside it, which then
// takes its place, so that it is never half written.
void WritePrivateFile(const std::filesystem::path& file, const std::string& content);

void RemovePrivateFile(const std::filesystem::path& file);

}  // namespace mirelo::sodium
