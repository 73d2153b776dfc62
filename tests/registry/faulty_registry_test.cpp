#include "support/faulty_registry.h"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "automation/runtime_error.h"
#include "support/memory_registry.h"

namespace mirelo::testing {
namespace {

using host::Registry;

class Faults : public ::testing::Test {
 protected:
  std::int32_t Set(const std::string& name) {
    return faulty.RegSetValueExA(Registry::kCurrentUser, name, Registry::kSz, "x", 1);
  }
  bool Has(const std::string& name) {
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    return memory.RegQueryValueExA(Registry::kCurrentUser, name, type, nullptr, size) == Registry::kSuccess;
  }

  MemoryRegistry memory;
  FaultyRegistry faulty{memory};
};

TEST_F(Faults, TheChosenCallFailsOnceAndDoesNothing) {
  faulty.Fail("RegSetValueExA", 3, Registry::kAccessDenied);
  EXPECT_EQ(Set("a"), Registry::kSuccess);
  EXPECT_EQ(Set("b"), Registry::kSuccess);
  EXPECT_EQ(Set("c"), Registry::kAccessDenied);
  EXPECT_EQ(Set("d"), Registry::kSuccess);
  EXPECT_TRUE(Has("b"));
  EXPECT_FALSE(Has("c"));
  EXPECT_TRUE(Has("d"));
}

TEST_F(Faults, ACallFailsUntilFurtherNotice) {
  faulty.FailAlways("RegSetValueExA");
  EXPECT_EQ(Set("a"), Registry::kRegistryIoFailed);
  EXPECT_EQ(Set("a"), Registry::kRegistryIoFailed);
  faulty.Fail("RegSetValueExA");
  EXPECT_EQ(Set("a"), Registry::kRegistryIoFailed);
  EXPECT_EQ(Set("a"), Registry::kSuccess);
}

TEST_F(Faults, ACallThrows) {
  faulty.Raise("RegSetValueExA", 2);
  EXPECT_EQ(Set("a"), Registry::kSuccess);
  EXPECT_THROW(Set("b"), RuntimeError);
  EXPECT_EQ(Set("c"), Registry::kSuccess);
}

TEST_F(Faults, CallsAreCounted) {
  faulty.Fail("RegSetValueExA");
  Set("a");
  Set("a");
  EXPECT_EQ(faulty.Calls("RegSetValueExA"), 2);
  EXPECT_EQ(faulty.Calls("RegCloseKey"), 0);
}

TEST_F(Faults, TheRightsAskedForAreKept) {
  Registry::Key key = 0;
  faulty.RegCreateKeyExA(Registry::kCurrentUser, "a", Registry::kAllAccess, key);
  EXPECT_EQ(faulty.LastAccess(), 0x3FU);
  faulty.Fail("RegOpenKeyExA");
  faulty.RegOpenKeyExA(Registry::kCurrentUser, "a", Registry::kRead, key);
  EXPECT_EQ(faulty.LastAccess(), 0x20019U);
}

TEST_F(Faults, ThePathAskedForIsKept) {
  Registry::Key key = 0;
  faulty.RegCreateKeyExA(Registry::kCurrentUser, "a", Registry::kAllAccess, key);
  EXPECT_EQ(faulty.LastPath(), "a");
  faulty.RegOpenKeyExA(Registry::kCurrentUser, "a\\", Registry::kRead, key);
  EXPECT_EQ(faulty.LastPath(), "a\\");
  faulty.RegDeleteKeyA(Registry::kCurrentUser, "b");
  EXPECT_EQ(faulty.LastPath(), "b");
}

TEST_F(Faults, OpenKeysAreCounted) {
  Registry::Key made = 0;
  Registry::Key opened = 0;
  faulty.RegCreateKeyExA(Registry::kCurrentUser, "a", Registry::kAllAccess, made);
  faulty.RegOpenKeyExA(Registry::kCurrentUser, "a", Registry::kRead, opened);
  EXPECT_EQ(faulty.OpenKeys(), 2);
  Registry::Key absent = 0;
  faulty.RegOpenKeyExA(Registry::kCurrentUser, "b", Registry::kRead, absent);
  faulty.RegCloseKey(Registry::kCurrentUser);
  EXPECT_EQ(faulty.OpenKeys(), 2);
  faulty.RegCloseKey(made);
  faulty.RegCloseKey(opened);
  faulty.RegCloseKey(opened);
  EXPECT_EQ(faulty.OpenKeys(), 0);
}

TEST_F(Faults, EachOfTheEightCallsCanFail) {
  Registry::Key key = Registry::kCurrentUser;
  std::uint32_t number = 0;
  std::uint32_t size = 0;
  const std::pair<std::string, std::function<std::int32_t()>> calls[] = {
      {"RegOpenKeyExA", [&] { return faulty.RegOpenKeyExA(key, "", Registry::kRead, key); }},
      {"RegQueryValueExA", [&] { return faulty.RegQueryValueExA(key, "", number, nullptr, size); }},
      {"RegQueryInfoKeyA", [&] { return faulty.RegQueryInfoKeyA(key, number, size); }},
      {"RegEnumValueA", [&] { return faulty.RegEnumValueA(key, 0, nullptr, size); }},
      {"RegCreateKeyExA", [&] { return faulty.RegCreateKeyExA(key, "", Registry::kRead, key); }},
      {"RegSetValueExA", [&] { return faulty.RegSetValueExA(key, "", Registry::kSz, "x", 1); }},
      {"RegDeleteKeyA", [&] { return faulty.RegDeleteKeyA(key, "a"); }},
      {"RegCloseKey", [&] { return faulty.RegCloseKey(key); }},
  };
  for (const auto& [name, call] : calls) {
    SCOPED_TRACE(name);
    faulty.Fail(name);
    EXPECT_EQ(call(), Registry::kRegistryIoFailed);
    EXPECT_NE(call(), Registry::kRegistryIoFailed);
  }
}

}  // namespace
}  // namespace mirelo::testing
