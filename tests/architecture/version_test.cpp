// The version stands in one place, and what people read of it agrees with that.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace mirelo {
namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;

const std::filesystem::path kSourceFolder = MIRELO_SOURCE_DIR;

// The first heading of a version in the changelog.
std::string NewestHeading() {
  std::ifstream changelog(kSourceFolder / "CHANGELOG.md");
  for (std::string line; std::getline(changelog, line);) {
    if (line.starts_with("## [")) return line;
  }
  return {};
}

TEST(Version, IsTheNewestOneOfTheChangelog) {
  EXPECT_THAT(NewestHeading(),
              MatchesRegex("## \\[" MIRELO_VERSION "\\] - [0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]"));
}

// Nothing is promised from one minor version to the next, so an example asks for the present one.
TEST(Version, IsTheOneThatTheExamplesAskFor) {
  const std::string version = MIRELO_VERSION;
  const std::string asked = "find_package(Mirelo " + version.substr(0, version.rfind('.')) + " REQUIRED)";
  int examples = 0;
  for (const auto& example : std::filesystem::directory_iterator(kSourceFolder / "examples")) {
    const auto project = example.path() / "CMakeLists.txt";
    if (!std::filesystem::exists(project)) continue;  // macros are read, not built
    std::ifstream file(project);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    EXPECT_THAT(text, HasSubstr(asked)) << example.path();
    ++examples;
  }
  EXPECT_GT(examples, 0);
}

}  // namespace
}  // namespace mirelo
