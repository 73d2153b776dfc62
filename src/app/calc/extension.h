#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace mirelo::app {

struct OfficePlace;

// The extension of LibreOffice as it lies on this machine. All raise error 53 or 75 with a text that says
// what to do.

// Whether it is there for all users, or for this one.
bool IsInstalledForAll(const OfficePlace& office);
bool IsInstalledForUser();

// The file mirelo.oxt of this build or installation; nothing where there is none.
std::optional<std::filesystem::path> ExtensionFile();

// Puts it into a folder of extensions for one office: unpacked, or as a link where it is unpacked already.
void PutExtensionInto(const std::filesystem::path& folder, const OfficePlace& office);

// Installs it, or removes it, for this user; for all users where this user is root, as LibreOffice wants no
// extensions of root's. The result is a sentence that says what was done.
std::string InstallExtension(const OfficePlace& office);
std::string RemoveExtension(const OfficePlace& office);

// The address of a file for LibreOffice.
std::string FileAddress(const std::filesystem::path& file);

}  // namespace mirelo::app
