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

}  // namespace mirelo::testing
