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

TEST_F(RegistryOfProcesses, AKilledWriterLosesNoAcknowledgedWrite) {
  constexpr int kRounds = 20;
  std::mt19937 random(20110120);
  std::uniform_int_distribution<int> acknowledged_before_kill(0, 12);
  std::uniform_int_distribution<int> microseconds(0, 1500);

  std::vector<int> acknowledged(kRounds, 0);
  for (int round = 0; round < kRounds; ++round) {
    ChildProcess writer([&](const ChildProcess::Test& test) {
      SqliteRegistry registry(place.file());
      for (int i = 1;; ++i) {
        const std::string name = std::to_string(round) + "/" + std::to_string(i);
        if (Store(registry, name, "value of " + name) != Registry::kSuccess) return;
        if (Store(registry, "last", std::to_string(round * 1'000'000 + i)) != Registry::kSuccess) return;
        test.Report(i);
      }
    });
    std::int32_t number = 0;
    const int wanted = acknowledged_before_kill(random);
    while (acknowledged[round] < wanted) {
      ASSERT_TRUE(writer.Read(number)) << "the writer ended by itself";
      acknowledged[round] = number;
    }
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
    writer.Kill();
    while (writer.Read(number)) acknowledged[round] = number;
    writer.Finish();

    SqliteRegistry registry(place.file());
    for (int i = 1; i <= acknowledged[round]; ++i) {
      const std::string name = std::to_string(round) + "/" + std::to_string(i);
      ASSERT_EQ(Load(registry, name), "value of " + name);
    }
    if (acknowledged[round] > 0) {
      const int last = std::stoi(Load(registry, "last"));
      EXPECT_GE(last, round * 1'000'000 + acknowledged[round]);
    }
  }

  SqliteRegistry registry(place.file());
  for (int round = 0; round < kRounds; ++round) {
    for (int i = 1; i <= acknowledged[round]; ++i) {
      const std::string name = std::to_string(round) + "/" + std::to_string(i);
      ASSERT_EQ(Load(registry, name), "value of " + name);
    }
  }
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
