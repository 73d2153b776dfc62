#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "host/secret.h"

namespace mirelo::sodium {

// Files for their owner's eyes only. Errors 75, with the file and the reason as text.

// The content; nothing when there is no such file. What is no regular file, a pipe say, or is larger than any
// credentials, is refused.
std::optional<std::string> ReadPrivateFile(const std::filesystem::path& file);
// The same into guarded memory.
std::optional<host::Secret> ReadSecretFile(const std::filesystem::path& file);

// Writes with mode 0600: into a new file beside it, which then takes its place, so that it is never half
// written. It is on the disk when this returns. The folder must be locked.
void WritePrivateFile(const std::filesystem::path& file, std::string_view content);

// Removes it, if it is there, and what a write of it that was broken off has left.
void RemovePrivateFile(const std::filesystem::path& file);

}  // namespace mirelo::sodium
