#include "app/calc/extension.h"

#include <sys/wait.h>
#include <unistd.h>
#include <zip.h>

#include <array>
#include <cctype>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <system_error>
#include <vector>

#include "app/calc/office_place.h"
#include "app/child_process.h"
#include "app/temporary_folder.h"
#include "app/whole_file.h"
#include "automation/hex.h"
#include "automation/runtime_error.h"

namespace mirelo::app {

namespace {

namespace fs = std::filesystem;

constexpr const char* kName = "mirelo";
constexpr const char* kFile = "mirelo.oxt";
constexpr zip_uint64_t kLargestPart = zip_uint64_t{256} << 20;
constexpr std::chrono::minutes kForUnopkg{2};

bool IsInPlace(const fs::path& file) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(file, ignored));
}

fs::path ProfileFolder() {
  if (const char* const folder = std::getenv("XDG_CONFIG_HOME"); folder != nullptr && *folder == '/')
    return fs::path(folder) / "libreoffice" / "4";
  const char* const home = std::getenv("HOME");
  return fs::path(home == nullptr ? "/" : home) / ".config" / "libreoffice" / "4";
}

fs::path RequiredFile() {
  if (auto file = ExtensionFile()) return *file;
  throw RuntimeError(
      53,
      std::string("The extension ") + kFile +
          " is not there: this Mirelo was built without LibreOffice, or its file was removed. It comes with "
          "the package mirelo; in a checkout ./run calc builds it");
}

struct CloseArchive {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
struct ClosePart {
  void operator()(zip_file_t* part) const { zip_fclose(part); }
};

[[noreturn]] void ThrowDamaged(const fs::path& file) {
  throw RuntimeError(75, file.string() + " is damaged. Install Mirelo anew");
}

bool LeadsOut(const fs::path& name) {
  for (const fs::path& part : name) {
    if (part == "..") return true;
  }
  return name.is_absolute() || name.empty();
}

void Unpack(const fs::path& file, const fs::path& folder) {
  int error = 0;
  const std::unique_ptr<zip_t, CloseArchive> archive(zip_open(file.c_str(), ZIP_RDONLY, &error));
  if (!archive) ThrowDamaged(file);
  const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
  for (zip_int64_t i = 0; i < count; ++i) {
    zip_stat_t status;
    const auto index = static_cast<zip_uint64_t>(i);
    if (zip_stat_index(archive.get(), index, 0, &status) != 0 || status.size > kLargestPart)
      ThrowDamaged(file);
    const fs::path name = status.name;
    if (LeadsOut(name)) ThrowDamaged(file);
    if (!name.has_filename()) continue;
    const std::unique_ptr<zip_file_t, ClosePart> part(zip_fopen_index(archive.get(), index, 0));
    std::string bytes(status.size, '\0');
    if (!part || zip_fread(part.get(), bytes.data(), bytes.size()) != static_cast<zip_int64_t>(bytes.size()))
      ThrowDamaged(file);
    fs::create_directories((folder / name).parent_path());
    WriteWhole(folder / name, bytes, NewFile::kUsual);
  }
}

// What unopkg says is told only where it fails.
std::string RunUnopkg(const OfficePlace& office, const std::vector<std::string>& arguments) {
  ChildProcess unopkg(office.programs / "unopkg", arguments);
  std::string said;
  while (const auto line = unopkg.ReadLine(kForUnopkg)) said += *line + "\n";
  if (unopkg.Wait(kForUnopkg) == 0) return said;
  throw RuntimeError(75, "LibreOffice's unopkg failed; close LibreOffice and try again. " + said);
}

bool IsRoot() { return ::geteuid() == 0; }

fs::path PlaceForAll(const OfficePlace& office) { return office.extensions / kName; }

// The package puts a link there.
bool IsOfPackage(const OfficePlace& office) { return fs::is_symlink(PlaceForAll(office)); }

std::string InstallForAll(const OfficePlace& office) try {
  const fs::path place = PlaceForAll(office);
  const fs::path file = RequiredFile();
  fs::remove_all(place);
  Unpack(file, place);
  return "The extension is installed for all users, in " + place.string() +
         ", since LibreOffice installs none for root. Start LibreOffice anew where it runs";
} catch (const fs::filesystem_error& error) {
  throw RuntimeError(75, std::string("The extension cannot be installed: ") + error.code().message() + ": " +
                             error.path1().string());
}

}  // namespace

bool IsInstalledForAll(const OfficePlace& office) {
  return IsInPlace(PlaceForAll(office) / "description.xml");
}

// Where LibreOffice unpacks what users add: one folder of a random name for each.
bool IsInstalledForUser() {
  std::error_code error;
  const fs::path folder = ProfileFolder() / "user" / "uno_packages" / "cache" / "uno_packages";
  for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    if (IsInPlace(entry->path() / kFile)) return true;
  }
  return false;
}

// Beside the folder of the programs, in a build; in lib/mirelo, where it is installed.
std::optional<fs::path> ExtensionFile() {
  const fs::path above = ProgramFolder().parent_path();
  for (const fs::path& file : {above / kFile, above / "lib" / kName / kFile}) {
    if (IsInPlace(file)) return file;
  }
  return std::nullopt;
}

void PutExtensionInto(const fs::path& folder, const OfficePlace& office) {
  fs::create_directories(folder);
  if (ExtensionFile()) return Unpack(*ExtensionFile(), folder / kName);
  if (!IsInstalledForAll(office)) RequiredFile();
  fs::create_directory_symlink(PlaceForAll(office), folder / kName);
}

std::string InstallExtension(const OfficePlace& office) {
  if (IsOfPackage(office)) return "The extension is there for all users, by the package mirelo";
  if (IsRoot()) return InstallForAll(office);
  RunUnopkg(office, {"add", "--force", "--suppress-license", RequiredFile().string()});
  return "The extension is installed for you. Start LibreOffice anew where it runs";
}

std::string RemoveExtension(const OfficePlace& office) {
  if (!IsRoot()) {
    // What was removed lies in its folder for some time yet.
    if (RunUnopkg(office, {"list"}).find(std::string("Identifier: ") + kName + "\n") == std::string::npos) {
      return IsInstalledForAll(office)
                 ? "The extension is not installed for you alone; for all users root removes it"
                 : "The extension is not installed for you";
    }
    RunUnopkg(office, {"remove", kName});
    return "The extension is removed for you. Start LibreOffice anew where it runs";
  }
  if (IsOfPackage(office)) throw RuntimeError(75, "The extension is the package mirelo's, which removes it");
  if (!IsInstalledForAll(office)) return "The extension is not installed";
  fs::remove_all(PlaceForAll(office));
  return "The extension is removed for all users. Start LibreOffice anew where it runs";
}

std::string FileAddress(const fs::path& file) {
  static constexpr std::string_view kPlain = "/-_.~";
  std::string address = "file://";
  for (const char letter : fs::absolute(file).string()) {
    const auto byte = static_cast<unsigned char>(letter);
    if (std::isalnum(byte) != 0 || kPlain.find(letter) != std::string_view::npos) {
      address += letter;
    } else {
      AppendHex(address += '%', byte);
    }
  }
  return address;
}

}  // namespace mirelo::app
