#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "host/registry.h"

namespace mirelo::testing {

using host::Registry;

// A registry to test, with what it stands on.
class TestedRegistry {
 public:
  virtual ~TestedRegistry() = default;
  virtual Registry& registry() = 0;
};

// The registries that must behave alike.
struct RegistryKind {
  std::string_view name;
  std::unique_ptr<TestedRegistry> (*make)();
  friend std::ostream& operator<<(std::ostream& out, const RegistryKind& kind) { return out << kind.name; }
};

// A test that runs over each of them. Calls are made through `registry`.
class RegistryCalls : public ::testing::TestWithParam<RegistryKind> {
 protected:
  // What a query for a value gives: its code, and on success kind and bytes.
  struct Answer {
    std::int32_t code = 0;
    std::uint32_t type = 0;
    std::string data;
    bool operator==(const Answer&) const = default;
  };

  // Keys are made below HKEY_CURRENT_USER. A call that fails here fails the test.
  Registry::Key Create(const std::string& path, std::uint32_t access = Registry::kAllAccess);
  Registry::Key Open(const std::string& path, std::uint32_t access = Registry::kAllAccess);
  // Whether a key is there, by its return code.
  std::int32_t OpenCode(const std::string& path, Registry::Key below = Registry::kCurrentUser);

  std::int32_t Set(Registry::Key key, const std::string& name, std::uint32_t type, std::string_view data);
  // In the two steps of a caller that does not know the size.
  Answer Query(Registry::Key key, const std::string& name);

 private:
  std::unique_ptr<TestedRegistry> tested_ = GetParam().make();

 protected:
  Registry& registry = tested_->registry();
};

std::string KindName(const ::testing::TestParamInfo<RegistryKind>& info);
const std::vector<RegistryKind>& RegistryKinds();

}  // namespace mirelo::testing
