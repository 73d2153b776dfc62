// Name and secret are stored and read as one: whenever they are read, and whenever the process that stores
// them is killed, they belong together.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <string>
#include <thread>

#include "adapters/sodium/sodium_vault.h"
#include "support/child_process.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using sodium::SodiumVault;

class KilledSet : public ::testing::Test {
 protected:
  void Set(int number) const {
    SodiumVault(folder / "vault").Set({.name = Name(number), .secret = "of " + Name(number)});
  }

  // Kills a process in the midst of storing, at a random moment behind `at_least` pairs.
  void SetAndKill(int first, int at_least) {
    const ChildProcess writer([&](const ChildProcess::Test& test) {
      for (int number = first;; ++number) {
        test.Report(number);
        Set(number);
      }
    });
    std::int32_t number = 0;
    for (int begun = 0; begun <= at_least; ++begun) ASSERT_TRUE(writer.Read(number));
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds_(random_)));
    writer.Kill();
    while (writer.Read(number)) continue;
  }

  // Whether a reader finds name and secret of one pair.
  bool FindsAPair() const {
    SodiumVault vault(folder / "vault");
    const auto stored = vault.Stored();
    const auto name = vault.Decipher(stored.name);
    return vault.Decipher(stored.secret).text() == "of " + std::string(name.text());
  }

  // Reads until the file is there, and reports how often that was, and how often it found no pair.
  ChildProcess ReaderUntil(const std::filesystem::path& end) const {
    return ChildProcess([this, end](const ChildProcess::Test& test) {
      std::int32_t readings = 0;
      std::int32_t halves = 0;
      for (; !std::filesystem::exists(end); ++readings) halves += FindsAPair() ? 0 : 1;
      test.Report(readings);
      test.Report(halves);
    });
  }

  static std::string Name(int number) { return "name " + std::to_string(number); }

  TempDirectory folder;

 private:
  std::mt19937 random_{20110120};
  std::uniform_int_distribution<int> microseconds_{0, 1500};
};

TEST_F(KilledSet, LeavesAndShowsNameAndSecretOfOnePair) {
  constexpr int kKills = 200;
  Set(0);
  ChildProcess reader = ReaderUntil(folder / "end");
  int halves = 0;
  for (int kill = 1; kill <= kKills; ++kill) {
    SetAndKill(1000 * kill, kill % 2);
    if (!FindsAPair()) ++halves;
  }
  EXPECT_EQ(halves, 0) << "of " << kKills << " kills";

  std::ofstream(folder / "end").close();
  std::int32_t readings = 0;
  std::int32_t read_halves = 0;
  ASSERT_TRUE(reader.Read(readings) && reader.Read(read_halves)) << "the reader failed";
  EXPECT_GT(readings, kKills);
  EXPECT_EQ(read_halves, 0) << "of " << readings << " readings meanwhile";

  Set(1);
  std::set<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder / "vault")) {
    files.insert(entry.path().filename().string());
  }
  EXPECT_EQ(files, (std::set<std::string>{"credentials", "credentials.key"}));
}

}  // namespace
}  // namespace mirelo::testing
