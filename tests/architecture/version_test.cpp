// The version stands in one place, and what people read of it agrees with that.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace mirelo {
namespace {

using ::testing::MatchesRegex;

// The first heading of a version in the changelog.
std::string NewestHeading() {
  std::ifstream changelog(std::filesystem::path(MIRELO_SOURCE_DIR) / "CHANGELOG.md");
  for (std::string line; std::getline(changelog, line);) {
    if (line.starts_with("## [")) return line;
  }
  return {};
}

TEST(Version, IsTheNewestOneOfTheChangelog) {
  EXPECT_THAT(NewestHeading(),
              MatchesRegex("## \\[" MIRELO_VERSION "\\] - [0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]"));
}

}  // namespace
}  // namespace mirelo
