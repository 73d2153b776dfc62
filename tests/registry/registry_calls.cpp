#include "registry/tested_registries.h"

namespace mirelo::testing {

std::string KindName(const ::testing::TestParamInfo<RegistryKind>& info) {
  return std::string(info.param.name);
}

Registry::Key RegistryCalls::Create(const std::string& path, std::uint32_t access) {
  Registry::Key key = 0;
  EXPECT_EQ(registry.RegCreateKeyExA(Registry::kCurrentUser, path, access, key), Registry::kSuccess) << path;
  return key;
}

Registry::Key RegistryCalls::Open(const std::string& path, std::uint32_t access) {
  Registry::Key key = 0;
  EXPECT_EQ(registry.RegOpenKeyExA(Registry::kCurrentUser, path, access, key), Registry::kSuccess) << path;
  return key;
}

std::int32_t RegistryCalls::OpenCode(const std::string& path, Registry::Key below) {
  Registry::Key key = 0;
  const auto code = registry.RegOpenKeyExA(below, path, Registry::kRead, key);
  if (code == Registry::kSuccess) registry.RegCloseKey(key);
  return code;
}

std::int32_t RegistryCalls::Set(Registry::Key key, const std::string& name, std::uint32_t type,
                                std::string_view data) {
  return registry.RegSetValueExA(key, name, type, data.data(), static_cast<std::uint32_t>(data.size()));
}

RegistryCalls::Answer RegistryCalls::Query(Registry::Key key, const std::string& name) {
  Answer answer;
  std::uint32_t size = 0;
  answer.code = registry.RegQueryValueExA(key, name, answer.type, nullptr, size);
  if (answer.code != Registry::kSuccess) return {answer.code, 0, ""};
  answer.data.resize(size);
  answer.code = registry.RegQueryValueExA(key, name, answer.type, answer.data.data(), size);
  return answer;
}

}  // namespace mirelo::testing
