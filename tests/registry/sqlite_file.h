#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "host/registry.h"
#include "support/temp_directory.h"

namespace mirelo::testing {

// A place for a registry file, and short forms of the calls on registries that open it.
class RegistryFolder {
 public:
  // Two folders that are not there yet lead to the file.
  std::filesystem::path file() const { return folder_.path() / "made" / "mirelo" / "registry.db"; }
  const std::filesystem::path& folder() const { return folder_.path(); }

  // Runs SQL on the file behind the registry's back; the first column of the last row, as text.
  std::string Sql(const std::string& sql) const;

 private:
  TempDirectory folder_;
};

// The key Software\Company, made if absent.
host::Registry::Key CompanyKey(host::Registry& registry);

// A text value of that key.
std::int32_t Store(host::Registry& registry, const std::string& name, const std::string& data);
// Its bytes, "(absent)" without it, or "error" and the return code.
std::string Load(host::Registry& registry, const std::string& name);

}  // namespace mirelo::testing
