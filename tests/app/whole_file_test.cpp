#include "app/whole_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

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

TEST_F(WholeFile, TakesNotThePlaceOfAFolder) {
  fs::create_directory(file);
  EXPECT_EQ(ErrorOf([&] { WriteWhole(file, "new"); }).Number(), 75);
  EXPECT_EQ(Files(), 1);
}

}  // namespace
}  // namespace mirelo::app
