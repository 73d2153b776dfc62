#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "host/host.h"
#include "host/registry.h"
#include "registry/tested_registries.h"
#include "support/error_number.h"
#include "support/faulty_registry.h"
#include "support/manual_clock.h"
#include "support/test_host.h"

namespace mirelo::testing {

constexpr std::string_view kSettingsPath = "Software\\Kestrin\\Dovanta2\\Settings";

inline void ExpectComponentFailure(const RuntimeError& error) {
  ExpectError(error, 0x80044284, "CAppSettings component failure", "Mirelo.CAppSettings");
}

// The store of the system over each kind of registry, whose calls can be made to fail.
class SettingsTest : public ::testing::TestWithParam<RegistryKind> {
 protected:
  SettingsTest() { settings.Init("Kestrin", "Dovanta2"); }
  // Whatever a test does to the store, no key stays open.
  ~SettingsTest() override { EXPECT_EQ(registry.OpenKeys(), 0); }

  // A value as a registry has it, put there behind the store's back.
  void Put(const std::string& name, std::uint32_t type, std::string_view data,
           std::string_view path = kSettingsPath) {
    Registry::Key key = 0;
    ASSERT_EQ(inner.RegCreateKeyExA(Registry::kCurrentUser, std::string(path), Registry::kAllAccess, key),
              Registry::kSuccess);
    const auto size = static_cast<std::uint32_t>(data.size());
    EXPECT_EQ(inner.RegSetValueExA(key, name, type, data.data(), size), Registry::kSuccess);
    inner.RegCloseKey(key);
  }

  struct Stored {
    std::uint32_t type;
    std::string data;
    bool operator==(const Stored&) const = default;
  };
  // What the registry has under a name; nothing when it is absent.
  std::optional<Stored> Find(const std::string& name, std::string_view path = kSettingsPath,
                             Registry::Key root = Registry::kCurrentUser) {
    Registry::Key key = 0;
    if (inner.RegOpenKeyExA(root, std::string(path), Registry::kRead, key) != Registry::kSuccess)
      return std::nullopt;
    Stored stored{0, std::string(1000, '\0')};
    auto size = static_cast<std::uint32_t>(stored.data.size());
    const auto code = inner.RegQueryValueExA(key, name, stored.type, stored.data.data(), size);
    inner.RegCloseKey(key);
    if (code != Registry::kSuccess) return std::nullopt;
    stored.data.resize(size);
    return stored;
  }
  bool HasKey(const std::string& path) {
    Registry::Key key = 0;
    if (inner.RegOpenKeyExA(Registry::kCurrentUser, path, Registry::kRead, key) != Registry::kSuccess)
      return false;
    inner.RegCloseKey(key);
    return true;
  }

  std::unique_ptr<TestedRegistry> tested = GetParam().make();
  Registry& inner = tested->registry();
  FaultyRegistry registry{inner};
  ManualClock clock;
  TestHost host = TestHost().Use(registry).Use(clock);
  host::HostScope scope{host};
  CAppSettings settings;
};

}  // namespace mirelo::testing
