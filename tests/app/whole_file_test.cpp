#include "app/whole_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include "automation/runtime_error.h"
#include "support/child_process.h"
#include "support/error_number.h"
#include "support/temp_directory.h"

namespace mirelo::app {
namespace {

namespace fs = std::filesystem;
using testing::ErrorOf;

class WholeFile : public ::testing::Test {
 protected:
  static std::string TextOf(const fs::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  std::ptrdiff_t Files() const {
    const fs::directory_iterator listing(folder.path());
    return std::distance(begin(listing), end(listing));
  }

  const testing::TempDirectory folder;
  const fs::path file = folder / "settings.txt";
};

TEST_F(WholeFile, IsMadeOrReplaced) {
  WriteWhole(file, "old");
  EXPECT_EQ(TextOf(file), "old");
  WriteWhole(file, "new");
  EXPECT_EQ(TextOf(file), "new");
  EXPECT_EQ(Files(), 1);
}

TEST_F(WholeFile, KeepsTheModeOfTheOldOne) {
  WriteWhole(file, "old");
  fs::permissions(file, fs::perms(0640));
  WriteWhole(file, "new");
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
}

TEST_F(WholeFile, IsItsOwnersAloneUnlessItIsAUsualOne) {
  const mode_t mask = ::umask(0027);
  WriteWhole(folder / "private", "a");
  WriteWhole(folder / "usual", "a", NewFile::kUsual);
  EXPECT_EQ(fs::status(folder / "private").permissions(), fs::perms(0600));
  WriteWhole(folder / "private", "b", NewFile::kUsual);
  EXPECT_EQ(::umask(mask), mode_t{0027}) << "as it was";
  EXPECT_EQ(fs::status(folder / "usual").permissions(), fs::perms(0640));
  EXPECT_EQ(fs::status(folder / "private").permissions(), fs::perms(0600)) << "that of the old one";
}

TEST_F(WholeFile, StandsWhereALinkLeads) {
  fs::create_directory(folder / "kept");
  fs::create_symlink("kept/real.txt", folder / "second");
  fs::create_symlink("second", file);
  for (const char* text : {"new", "newer"}) {
    WriteWhole(file, text);
    EXPECT_TRUE(fs::is_symlink(file) && fs::is_symlink(folder / "second"));
    EXPECT_EQ(TextOf(folder / "kept/real.txt"), text);
  }
}

TEST_F(WholeFile, IsNoneBehindLinksThatLeadNowhere) {
  fs::create_symlink("settings.txt", file);
  EXPECT_EQ(ErrorOf([&] { WriteWhole(file, "new"); }).Number(), 75);
  EXPECT_TRUE(fs::is_symlink(file));
}

// A device in whose place a file stood would fail all programs of the machine.
TEST_F(WholeFile, TakesNotThePlaceOfAPipeButIsWrittenIntoIt) {
  ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
  const int reader = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  ASSERT_GE(reader, 0);
  WriteWhole(file, "new");
  std::array<char, 8> bytes{};
  EXPECT_EQ(::read(reader, bytes.data(), bytes.size()), 3);
  EXPECT_STREQ(bytes.data(), "new");
  EXPECT_TRUE(fs::is_fifo(file));
  EXPECT_EQ(Files(), 1);
  ::close(reader);
}

TEST_F(WholeFile, TakesNotThePlaceOfOneThatItsOwnerMayNotWrite) {
  WriteWhole(file, "old");
  fs::permissions(file, fs::perms(0400));
  testing::ChildProcess person([&](const testing::ChildProcess::Test& test) {
    testing::DropRightsOfRoot();
    const auto error = ErrorOf([&] { WriteWhole(file, "new"); });
    test.Report(error.Number());
    test.Report(error.Description().ends_with(": Permission denied") ? 1 : 0);
  });
  std::int32_t number = 0;
  EXPECT_TRUE(person.Read(number) && number == 75) << number;
  EXPECT_TRUE(person.Read(number) && number == 1);
  EXPECT_TRUE(person.Finish());
  EXPECT_EQ(TextOf(file), "old");
  EXPECT_EQ(Files(), 1);
}

TEST_F(WholeFile, LeavesNothingBesideItOfAProcessThatWasKilled) {
  const std::string text(std::size_t{4} << 20, 'x');
  constexpr int kMostKills = 100;
  bool has_left = false;
  for (int kill = 0; kill < kMostKills && !has_left; ++kill) {
    testing::ChildProcess killed([&](const testing::ChildProcess::Test& test) {
      test.Report(0);
      for (;;) WriteWhole(folder / "other.txt", text);
    });
    std::int32_t begun = 0;
    ASSERT_TRUE(killed.Read(begun));
    std::this_thread::sleep_for(std::chrono::milliseconds(1 + kill % 10));
    killed.Kill();
    killed.Finish();
    has_left = Files() > (fs::exists(folder / "other.txt") ? 1 : 0);
  }
  ASSERT_TRUE(has_left) << "none was killed while it wrote";
  fs::remove(folder / "other.txt");
  WriteWhole(file, "new");
  EXPECT_EQ(Files(), 1);
}

TEST_F(WholeFile, IsNotTakenFromOneThatIsMadeAtTheSameTime) {
  constexpr int kFiles = 200;
  const auto make = [&](const char* name) {
    int failures = 0;
    for (int i = 0; i < kFiles; ++i) {
      try {
        WriteWhole(folder / name, "text");
      } catch (const RuntimeError&) {
        ++failures;
      }
    }
    return failures;
  };
  testing::ChildProcess other(
      [&](const testing::ChildProcess::Test& test) { test.Report(make("other.txt")); });
  EXPECT_EQ(make("settings.txt"), 0);
  std::int32_t failures = -1;
  EXPECT_TRUE(other.Read(failures));
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(Files(), 2);
}

TEST_F(WholeFile, LeavesFilesOfOtherMakersAlone) {
  for (const char* name :
       {".mirelo-export", ".abcdef.mirelo-exports", ".abc.mirelo-export", "settings.txt.abcdef"})
    std::ofstream(folder / name) << "mine";
  WriteWhole(file, "new");
  EXPECT_EQ(Files(), 5);
}

TEST_F(WholeFile, TakesNotThePlaceOfAFolder) {
  fs::create_directory(file);
  EXPECT_EQ(ErrorOf([&] { WriteWhole(file, "new"); }).Number(), 75);
  EXPECT_EQ(Files(), 1);
}

}  // namespace
}  // namespace mirelo::app
