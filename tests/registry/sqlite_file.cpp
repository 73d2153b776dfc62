#include "registry/sqlite_file.h"

#include <sqlite3.h>

#include <stdexcept>

namespace mirelo::testing {

using host::Registry;

namespace {

int KeepFirstColumn(void* last, int, char** columns, char**) {
  *static_cast<std::string*>(last) = columns[0] == nullptr ? "" : columns[0];
  return 0;
}

}  // namespace

std::string RegistryFolder::Sql(const std::string& sql) const {
  sqlite3* database = nullptr;
  std::string last;
  int result = sqlite3_open(file().c_str(), &database);
  if (result == SQLITE_OK) result = sqlite3_exec(database, sql.c_str(), KeepFirstColumn, &last, nullptr);
  const std::string message = sqlite3_errmsg(database);
  sqlite3_close(database);
  if (result != SQLITE_OK) throw std::runtime_error(sql + ": " + message);
  return last;
}

Registry::Key CompanyKey(Registry& registry) {
  Registry::Key key = 0;
  const auto code =
      registry.RegCreateKeyExA(Registry::kCurrentUser, "Software\\Company", Registry::kAllAccess, key);
  if (code != Registry::kSuccess) throw std::runtime_error("no key: " + std::to_string(code));
  return key;
}

std::int32_t Store(Registry& registry, const std::string& name, const std::string& data) {
  const auto key = CompanyKey(registry);
  const auto code =
      registry.RegSetValueExA(key, name, Registry::kSz, data.data(), static_cast<std::uint32_t>(data.size()));
  registry.RegCloseKey(key);
  return code;
}

std::string Load(Registry& registry, const std::string& name) {
  const auto key = CompanyKey(registry);
  std::uint32_t type = 0;
  std::string data(1000, '\0');
  auto size = static_cast<std::uint32_t>(data.size());
  const auto code = registry.RegQueryValueExA(key, name, type, data.data(), size);
  registry.RegCloseKey(key);
  if (code == Registry::kFileNotFound) return "(absent)";
  if (code != Registry::kSuccess) return "error " + std::to_string(code);
  return data.substr(0, size);
}

}  // namespace mirelo::testing
