// LibreOffice makes the objects of the tables by lists of its own.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include "automation_server/classes.h"

namespace mirelo {
namespace {

// What the pattern's bracket matches in a file of the component.
std::set<std::string> FoundIn(const char* file, const std::string& pattern) {
  std::ifstream stream(std::filesystem::path(MIRELO_SOURCE_DIR) / "src/libreoffice" / file);
  const std::string text{std::istreambuf_iterator<char>(stream), {}};
  const std::regex expression(pattern);
  std::set<std::string> found;
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match) {
    found.insert((*match)[1]);
  }
  return found;
}

TEST(ServicesOfTheComponent, AreTheClassesThatClientsCanMake) {
  std::set<std::string> classes;
  for (const auto& known : automation_server::Classes()) {
    if (known.IsCreatable()) classes.emplace(known.name());
  }
  ASSERT_FALSE(classes.empty());
  EXPECT_EQ(FoundIn("mirelo.components", "service name=\"mirelo\\.(\\w+)\""), classes);
  EXPECT_EQ(FoundIn("mirelo.components", "constructor=\"mirelo_(\\w+)\""), classes);
  EXPECT_EQ(FoundIn("services.cpp", "\nSERVICE\\((\\w+)\\)"), classes);
}

}  // namespace
}  // namespace mirelo
