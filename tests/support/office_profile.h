#pragma once

#include <filesystem>

namespace mirelo::testing {

// Has the first start of an office with this profile take no longer than others (office_settings.xcu). Who
// includes this is compiled with the settings' place as MIRELO_OFFICE_SETTINGS.
inline void PrepareOfficeProfile(const std::filesystem::path& profile) {
  namespace fs = std::filesystem;
  fs::create_directories(profile / "user");
  fs::copy_file(MIRELO_OFFICE_SETTINGS, profile / "user" / "registrymodifications.xcu",
                fs::copy_options::skip_existing);
}

}  // namespace mirelo::testing
