#include "host/registry_transaction.h"

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "registry/tested_registries.h"
#include "support/faulty_registry.h"
#include "support/memory_registry.h"

namespace mirelo::testing {
namespace {

using host::RegistryTransaction;
using End = RegistryTransaction::End;

class Transactions : public RegistryCalls {
 protected:
  // The value's text, or "(absent)".
  std::string Read(const std::string& path, const std::string& name) {
    if (OpenCode(path) != Registry::kSuccess) return "(absent)";
    const auto key = Open(path);
    const Answer answer = Query(key, name);
    registry.RegCloseKey(key);
    return answer.code == Registry::kFileNotFound ? "(absent)" : answer.data;
  }
  void Write(const std::string& path, const std::string& name, const std::string& text) {
    const auto key = Create(path);
    EXPECT_EQ(Set(key, name, Registry::kSz, text), Registry::kSuccess);
    registry.RegCloseKey(key);
  }
};
INSTANTIATE_TEST_SUITE_P(Registries, Transactions, ::testing::ValuesIn(RegistryKinds()), KindName);

TEST_P(Transactions, StoreWhatWasWrittenOnceTheyAreCommitted) {
  {
    RegistryTransaction together(registry);
    ASSERT_TRUE(together.IsUnderWay());
    Write("Software\\New", "a", "1");
    Write("Software\\New", "b", "2");
    EXPECT_EQ(Read("Software\\New", "a"), "1") << "their own writes are read at once";
    EXPECT_EQ(together.Commit(), End::Stored);
  }
  EXPECT_EQ(Read("Software\\New", "a"), "1");
  EXPECT_EQ(Read("Software\\New", "b"), "2");
}

TEST_P(Transactions, LeaveEverythingAsItWasWithoutACommit) {
  Write("Software\\Kept", "a", "before");
  Write("Software\\Deleted", "a", "before");
  {
    RegistryTransaction together(registry);
    Write("Software\\Kept", "a", "after");
    Write("Software\\Kept", "b", "after");
    Write("Software\\Made\\Below", "a", "after");
    EXPECT_EQ(registry.RegDeleteKeyA(Registry::kCurrentUser, "Software\\Deleted"), Registry::kSuccess);
    EXPECT_EQ(Read("Software\\Kept", "a"), "after");
    EXPECT_EQ(Read("Software\\Deleted", "a"), "(absent)");
  }
  EXPECT_EQ(Read("Software\\Kept", "a"), "before");
  EXPECT_EQ(Read("Software\\Kept", "b"), "(absent)");
  EXPECT_EQ(OpenCode("Software\\Made"), Registry::kFileNotFound);
  EXPECT_EQ(Read("Software\\Deleted", "a"), "before");
}

TEST_P(Transactions, LeaveHandlesFromBeforeInUse) {
  const auto key = Create("Software");
  {
    RegistryTransaction together(registry);
    EXPECT_EQ(Set(key, "a", Registry::kSz, "x"), Registry::kSuccess);
  }
  EXPECT_EQ(Query(key, "a").code, Registry::kFileNotFound);
  EXPECT_EQ(Set(key, "a", Registry::kSz, "y"), Registry::kSuccess);
  EXPECT_EQ(Query(key, "a").data, "y");
}

TEST_P(Transactions, ComeOneAtATime) {
  EXPECT_EQ(registry.CommitTransaction(), Registry::kInvalidParameter);
  registry.RollBackTransaction();
  ASSERT_EQ(registry.BeginTransaction(), Registry::kSuccess);
  EXPECT_EQ(registry.BeginTransaction(), Registry::kInvalidParameter);
  Write("Software", "a", "1");
  ASSERT_EQ(registry.CommitTransaction(), Registry::kSuccess);
  EXPECT_EQ(registry.CommitTransaction(), Registry::kInvalidParameter);
  ASSERT_EQ(registry.BeginTransaction(), Registry::kSuccess);
  registry.RollBackTransaction();
  EXPECT_EQ(Read("Software", "a"), "1");
}

TEST_P(Transactions, OutliveAPathThatCannotBeMade) {
  RegistryTransaction together(registry);
  Write("Software", "a", "1");
  Registry::Key key = 0;
  EXPECT_EQ(registry.RegCreateKeyExA(Registry::kCurrentUser, "Software\\" + std::string(256, 'n'),
                                     Registry::kAllAccess, key),
            Registry::kInvalidParameter);
  EXPECT_EQ(together.Commit(), End::Stored);
  EXPECT_EQ(Read("Software", "a"), "1");
}

TEST(FaultyTransactions, EndOnce) {
  MemoryRegistry memory;
  RegistryTransaction together(memory);
  EXPECT_EQ(together.Commit(), End::Stored);
  EXPECT_EQ(together.Commit(), End::NotBegun);
}

TEST(FaultyTransactions, WriteOneByOneWhereNoneCanBeBegun) {
  MemoryRegistry memory;
  FaultyRegistry faulty(memory);
  faulty.Fail("BeginTransaction");
  {
    RegistryTransaction together(faulty);
    EXPECT_FALSE(together.IsUnderWay());
    EXPECT_EQ(faulty.RegSetValueExA(Registry::kCurrentUser, "a", Registry::kSz, "x", 1), Registry::kSuccess);
    EXPECT_EQ(together.Commit(), End::NotBegun);
  }
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  EXPECT_EQ(memory.RegQueryValueExA(Registry::kCurrentUser, "a", type, nullptr, size), Registry::kSuccess);
}

TEST(FaultyTransactions, StoreNothingWhenTheyCannotBeCommitted) {
  MemoryRegistry memory;
  FaultyRegistry faulty(memory);
  faulty.Fail("CommitTransaction");
  {
    RegistryTransaction together(faulty);
    EXPECT_EQ(faulty.RegSetValueExA(Registry::kCurrentUser, "a", Registry::kSz, "x", 1), Registry::kSuccess);
    EXPECT_EQ(together.Commit(), End::Failed);
  }
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  EXPECT_EQ(memory.RegQueryValueExA(Registry::kCurrentUser, "a", type, nullptr, size),
            Registry::kFileNotFound);
}

}  // namespace
}  // namespace mirelo::testing
