#include "registry/tested_registries.h"

#include "adapters/sqlite/sqlite_registry.h"
#include "support/faulty_registry.h"
#include "support/memory_registry.h"
#include "support/temp_directory.h"

namespace mirelo::testing {

namespace {

class InMemory : public TestedRegistry {
 public:
  Registry& registry() override { return registry_; }

 private:
  MemoryRegistry registry_;
};

class InFile : public TestedRegistry {
 public:
  Registry& registry() override { return registry_; }

 private:
  TempDirectory folder_;
  sqlite::SqliteRegistry registry_{folder_ / "registry.db"};
};

class Faultless : public TestedRegistry {
 public:
  Registry& registry() override { return registry_; }

 private:
  MemoryRegistry inner_;
  FaultyRegistry registry_{inner_};
};

template <class Kind>
std::unique_ptr<TestedRegistry> Make() {
  return std::make_unique<Kind>();
}

}  // namespace

const std::vector<RegistryKind>& RegistryKinds() {
  static const std::vector<RegistryKind> kinds{
      {"Memory", Make<InMemory>}, {"Sqlite", Make<InFile>}, {"FaultyWithoutFaults", Make<Faultless>}};
  return kinds;
}

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
