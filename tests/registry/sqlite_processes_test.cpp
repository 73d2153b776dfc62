#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "adapters/sqlite/sqlite_registry.h"
#include "registry/sqlite_file.h"
#include "support/child_process.h"

namespace mirelo::testing {
namespace {

using host::Registry;
using sqlite::SqliteRegistry;

class RegistryOfProcesses : public ::testing::Test {
 protected:
  RegistryFolder place;
};

// They make the file at the same time, too.
TEST_F(RegistryOfProcesses, TwoWritersLoseNothing) {
  constexpr int kWriters = 2;
  constexpr int kWrites = 60;
  std::vector<std::unique_ptr<ChildProcess>> writers;
  for (int writer = 0; writer < kWriters; ++writer) {
    writers.push_back(std::make_unique<ChildProcess>([&](const ChildProcess::Test& test) {
      SqliteRegistry registry(place.file());
      for (int i = 0; i < kWrites; ++i) {
        const std::string name = std::to_string(writer) + "/" + std::to_string(i);
        if (Store(registry, name, "value of " + name) != Registry::kSuccess) test.Report(i);
        if (Store(registry, "common", name) != Registry::kSuccess) test.Report(i);
      }
    }));
  }
  for (const auto& writer : writers) {
    std::int32_t failed = 0;
    EXPECT_FALSE(writer->Read(failed)) << "write " << failed << " failed";
    EXPECT_TRUE(writer->Finish());
  }

  SqliteRegistry registry(place.file());
  for (int writer = 0; writer < kWriters; ++writer) {
    for (int i = 0; i < kWrites; ++i) {
      const std::string name = std::to_string(writer) + "/" + std::to_string(i);
      EXPECT_EQ(Load(registry, name), "value of " + name);
    }
  }
  const std::string last = "/" + std::to_string(kWrites - 1);
  EXPECT_TRUE(Load(registry, "common").ends_with(last)) << Load(registry, "common");
}

// All find the file without its tables before one of them makes these.
TEST_F(RegistryOfProcesses, SeveralThatStartAtOnceMakeTheFileOnce) {
  constexpr int kRounds = 5;
  constexpr int kStarters = 4;
  for (int round = 0; round < kRounds; ++round) {
    const RegistryFolder fresh;
    std::vector<std::unique_ptr<ChildProcess>> starters;
    for (int starter = 0; starter < kStarters; ++starter) {
      starters.push_back(std::make_unique<ChildProcess>([&](const ChildProcess::Test& test) {
        std::int32_t go = 0;
        test.Report(starter);
        if (!test.Await(go)) return;
        SqliteRegistry registry(fresh.file());
        test.Report(Store(registry, std::to_string(starter), "stored"));
      }));
      std::int32_t ready = -1;
      ASSERT_TRUE(starters.back()->Read(ready));
    }
    for (const auto& starter : starters) starter->Send(1);
    for (const auto& starter : starters) {
      std::int32_t stored = -1;
      EXPECT_TRUE(starter->Read(stored)) << "it could not open the file";
      EXPECT_EQ(stored, Registry::kSuccess);
      EXPECT_TRUE(starter->Finish());
    }
    SqliteRegistry registry(fresh.file());
    for (int starter = 0; starter < kStarters; ++starter) {
      EXPECT_EQ(Load(registry, std::to_string(starter)), "stored");
    }
  }
}

// A process that writes values one by one and reports each that was acknowledged, until it is killed.
class KilledWriter : public RegistryOfProcesses {
 protected:
  // Kills a writer at a random moment behind `at_least` acknowledged writes; how many there were.
  int WriteAndKill(int round, int at_least) {
    const ChildProcess writer([&](const ChildProcess::Test& test) {
      SqliteRegistry registry(place.file());
      for (int i = 1; Store(registry, Name(round, i), Value(round, i)) == Registry::kSuccess; ++i)
        test.Report(i);
    });
    std::int32_t acknowledged = 0;
    while (acknowledged < at_least && writer.Read(acknowledged)) continue;
    EXPECT_GE(acknowledged, at_least) << "the writer ended by itself";
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds_(random_)));
    writer.Kill();
    while (writer.Read(acknowledged)) continue;
    return acknowledged;
  }

  static void ExpectKept(Registry& registry, int round, int acknowledged) {
    for (int i = 1; i <= acknowledged; ++i) EXPECT_EQ(Load(registry, Name(round, i)), Value(round, i));
  }

  static std::string Name(int round, int i) { return std::to_string(round) + "/" + std::to_string(i); }
  static std::string Value(int round, int i) { return "value of " + Name(round, i); }

  std::mt19937 random_{20110120};
  std::uniform_int_distribution<int> microseconds_{0, 6000};
};

TEST_F(KilledWriter, LosesNoAcknowledgedWrite) {
  constexpr int kRounds = 20;
  std::uniform_int_distribution<int> at_least(0, 12);
  std::vector<int> acknowledged;
  for (int round = 0; round < kRounds; ++round) {
    acknowledged.push_back(WriteAndKill(round, at_least(random_)));
    SqliteRegistry registry(place.file());
    ExpectKept(registry, round, acknowledged.back());
  }

  SqliteRegistry registry(place.file());
  int round = 0;
  for (const int count : acknowledged) ExpectKept(registry, round++, count);
  EXPECT_EQ(place.Sql("PRAGMA integrity_check"), "ok");
  EXPECT_EQ(place.Sql("SELECT count(*) FROM pragma_foreign_key_check"), "0");
}

// A process that does one thing to the registry when it is told to. It is started before the test opens the
// registry.
class Other {
 public:
  Other(const std::filesystem::path& file, const std::function<void(Registry&)>& act)
      : process_([&](const ChildProcess::Test& test) {
          SqliteRegistry registry(file);
          std::int32_t number = 0;
          test.Report(0);
          while (test.Await(number)) {
            act(registry);
            test.Report(number);
          }
        }) {
    AwaitReport();
  }

  void Act() {
    process_.Send(1);
    AwaitReport();
  }

 private:
  void AwaitReport() {
    std::int32_t number = 0;
    EXPECT_TRUE(process_.Read(number)) << "the other process failed";
  }

  ChildProcess process_;
};

TEST_F(RegistryOfProcesses, SeesTheValuesThatAnotherOneWrites) {
  Other other(place.file(), [](Registry& registry) {
    Store(registry, "Name", "2");
    Store(registry, "New", "x");
  });
  SqliteRegistry registry(place.file());
  ASSERT_EQ(Store(registry, "Name", "1"), Registry::kSuccess);
  ASSERT_EQ(Load(registry, "Name"), "1");
  const auto key = CompanyKey(registry);
  std::uint32_t count = 0;
  std::uint32_t longest = 0;
  ASSERT_EQ(registry.RegQueryInfoKeyA(key, count, longest), Registry::kSuccess);

  other.Act();

  EXPECT_EQ(Load(registry, "Name"), "2");
  EXPECT_EQ(Load(registry, "New"), "x");
  ASSERT_EQ(registry.RegQueryInfoKeyA(key, count, longest), Registry::kSuccess);
  EXPECT_EQ(count, 2U);
}

TEST_F(RegistryOfProcesses, SeesThatAnotherOneDeletedTheKey) {
  Other other(place.file(), [](Registry& registry) {
    registry.RegDeleteKeyA(Registry::kCurrentUser, "Software\\Company");
  });
  SqliteRegistry registry(place.file());
  const auto key = CompanyKey(registry);
  ASSERT_EQ(Store(registry, "Name", "x"), Registry::kSuccess);
  ASSERT_EQ(Load(registry, "Name"), "x");

  other.Act();

  std::uint32_t type = 0;
  std::uint32_t size = 0;
  EXPECT_EQ(registry.RegQueryValueExA(key, "Name", type, nullptr, size), Registry::kKeyDeleted);
  EXPECT_EQ(registry.RegSetValueExA(key, "Name", Registry::kSz, "y", 1), Registry::kKeyDeleted);
  EXPECT_EQ(Load(registry, "Name"), "(absent)") << "of the key that was made anew";
}

}  // namespace
}  // namespace mirelo::testing
