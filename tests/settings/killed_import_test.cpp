// An import is a transaction: whenever its process is killed, all of its settings are stored or none.

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "adapters/sqlite/sqlite_registry.h"
#include "core/settings_export.h"
#include "host/host.h"
#include "support/child_process.h"
#include "support/temp_directory.h"
#include "support/test_host.h"

namespace mirelo::testing {
namespace {

using ::testing::SizeIs;

constexpr int kSettings = 12;

class KilledImport : public ::testing::Test {
 protected:
  // A store in the file, as a program has it.
  struct Store {
    explicit Store(const std::filesystem::path& file) : registry(file) {
      settings.Init("Kestrin", "Dovanta2");
    }
    sqlite::SqliteRegistry registry;
    TestHost host = TestHost().Use(registry);
    host::HostScope scope{host};
    CAppSettings settings;
  };

  // Settings that all have one value.
  static std::vector<StoredSetting> Alike(std::int32_t value) {
    std::vector<StoredSetting> settings;
    for (int i = 0; i < kSettings; ++i) {
      settings.push_back({"Settings\\WidthField", "Column " + std::to_string(i), value});
    }
    return settings;
  }

  // Kills a process in the midst of imports, at a random moment behind `at_least` of them.
  void ImportAndKill(std::int32_t first_value, int at_least) {
    const ChildProcess importer([&](const ChildProcess::Test& test) {
      Store store(file);
      for (std::int32_t value = first_value;; ++value) {
        test.Report(value);
        WriteSettings(store.settings, Alike(value));
      }
    });
    std::int32_t value = 0;
    for (int begun = 0; begun <= at_least; ++begun) ASSERT_TRUE(importer.Read(value));
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds_(random_)));
    importer.Kill();
    while (importer.Read(value)) continue;
  }

  std::set<std::int32_t> Values() const {
    Store store(file);
    std::set<std::int32_t> values;
    const auto settings = ReadSettings(store.settings);
    EXPECT_THAT(settings, SizeIs(kSettings));
    for (const auto& setting : settings) values.insert(setting.value.ToInt32());
    return values;
  }

  TempDirectory folder;
  const std::filesystem::path file = folder / "registry.db";

 private:
  std::mt19937 random_{20110120};
  std::uniform_int_distribution<int> microseconds_{0, 1500};
};

TEST_F(KilledImport, LeavesAllSettingsOfOneImport) {
  constexpr int kKills = 200;
  {
    Store store(file);
    WriteSettings(store.settings, Alike(0));
  }
  int mixed = 0;
  for (int kill = 1; kill <= kKills; ++kill) {
    const std::int32_t first_value = 1000 * kill;
    const int at_least = kill % 2;
    ImportAndKill(first_value, at_least);
    const auto values = Values();
    if (values.size() != 1) ++mixed;
    if (at_least > 0) {
      EXPECT_GE(*values.begin(), first_value + at_least - 1) << "an import is lost that was over";
    }
  }
  EXPECT_EQ(mixed, 0) << "of " << kKills << " kills";
}

}  // namespace
}  // namespace mirelo::testing
