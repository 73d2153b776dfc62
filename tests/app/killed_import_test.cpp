// mirelo settings import is a transaction: whenever the program is killed, all of its settings are stored or
// none.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "adapters/sqlite/sqlite_registry.h"
#include "core/settings_export.h"
#include "host/host.h"
#include "support/built_program.h"
#include "support/child_process.h"
#include "support/environment_variable.h"
#include "support/sanitized.h"
#include "support/temp_directory.h"
#include "support/test_host.h"

namespace mirelo::testing {
namespace {

using ::testing::SizeIs;
using Microseconds = std::chrono::duration<double, std::micro>;

const std::filesystem::path kProgram = BuiltProgram("mirelo");
constexpr int kSettings = 60;

class KilledImport : public ::testing::Test {
 protected:
  // Starts an import of settings that all have this value.
  ChildProcess Import(std::int32_t value) const {
    std::vector<StoredSetting> settings;
    for (int i = 0; i < kSettings; ++i) {
      settings.push_back({"Settings\\WidthField", "Column " + std::to_string(i), value});
    }
    std::ofstream(text) << ExportSettings(settings);
    return ChildProcess([this](const ChildProcess::Test&) {
      ::setenv("HOME", folder.path().c_str(), 1);
      const int nowhere = ::open("/dev/null", O_WRONLY);
      ::dup2(nowhere, STDERR_FILENO);
      ::execl(kProgram.c_str(), kProgram.c_str(), "--registry", file.c_str(), "settings", "import",
              text.c_str(), nullptr);
    });
  }

  // The values that are stored: one when all are of one import.
  std::set<std::int32_t> Values() const {
    sqlite::SqliteRegistry registry(file);
    TestHost host = TestHost().Use(registry);
    const host::HostScope scope{host};
    CAppSettings store;
    store.Init("Kestrin", "Dovanta2");
    std::set<std::int32_t> values;
    const auto settings = ReadSettings(store);
    EXPECT_THAT(settings, SizeIs(kSettings));
    for (const auto& setting : settings) values.insert(setting.value.ToInt32());
    return values;
  }

  // In memory where that can be: who is killed leaves to the system what was written, not to the disk.
  EnvironmentVariable place{"TMPDIR", std::filesystem::exists("/dev/shm") ? "/dev/shm" : "/tmp"};
  TempDirectory folder;
  const std::filesystem::path file = folder / "registry.db";
  const std::filesystem::path text = folder / "settings.txt";
};

TEST_F(KilledImport, LeavesAllSettingsOfOneImport) {
  // Under the sanitizers most of the time would go into starting the program.
  const int kills = kIsSanitized ? 50 : 200;
  const auto start = std::chrono::steady_clock::now();
  ASSERT_TRUE(Import(0).Finish());
  // Kills come about the moment in which an import is stored, wherever that is on a machine that has more to
  // do at times.
  Microseconds moment = std::chrono::steady_clock::now() - start;
  std::mt19937 random(20110120);
  std::uniform_real_distribution<double> spread(0.7, 1.3);

  std::int32_t stored = 0;
  int mixed = 0;
  int survivors = 0;
  for (int kill = 1; kill <= kills; ++kill) {
    {
      const ChildProcess program = Import(kill);
      std::this_thread::sleep_for(moment * spread(random));
      program.Kill();
    }
    const auto values = Values();
    if (values.size() != 1 || (*values.begin() != stored && *values.begin() != kill)) ++mixed;
    const bool survived = values.contains(kill);
    survivors += survived ? 1 : 0;
    stored = survived ? kill : stored;
    moment *= survived ? 0.95 : 1.05;
  }
  EXPECT_EQ(mixed, 0) << "of " << kills << " kills";
  EXPECT_GT(survivors, 0) << "no kill came late enough";
  EXPECT_LT(survivors, kills) << "no kill came early enough";
}

}  // namespace
}  // namespace mirelo::testing
