#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "registry/tested_registries.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Enumeration : public RegistryCalls {
 protected:
  // As a caller walks the names, with the buffer that the key's information asks for.
  std::vector<std::string> Names(Registry::Key from) {
    std::uint32_t count = 0;
    std::uint32_t longest = 0;
    EXPECT_EQ(registry.RegQueryInfoKeyA(from, count, longest), Registry::kSuccess);
    std::vector<std::string> names;
    for (std::uint32_t index = 0;; ++index) {
      std::string name(longest + 1, '#');
      auto size = static_cast<std::uint32_t>(name.size());
      const auto code = registry.RegEnumValueA(from, index, name.data(), size);
      if (code != Registry::kSuccess) {
        EXPECT_EQ(code, Registry::kNoMoreItems);
        EXPECT_EQ(index, count);
        return names;
      }
      EXPECT_EQ(name.at(size), '\0');
      names.push_back(name.substr(0, size));
    }
  }

  void SetNames(const std::vector<std::string>& names) {
    for (const auto& name : names) ASSERT_EQ(Set(key, name, Registry::kSz, "x"), Registry::kSuccess);
  }

  Registry::Key key = Create("Software\\Company");
};
INSTANTIATE_TEST_SUITE_P(Registries, Enumeration, ::testing::ValuesIn(RegistryKinds()), KindName);

TEST_P(Enumeration, AnEmptyKeyHasNoNames) {
  std::uint32_t count = 7;
  std::uint32_t longest = 7;
  EXPECT_EQ(registry.RegQueryInfoKeyA(key, count, longest), Registry::kSuccess);
  EXPECT_EQ(count, 0U);
  EXPECT_EQ(longest, 0U);
  EXPECT_THAT(Names(key), IsEmpty());
}

TEST_P(Enumeration, GivesNamesInTheOrderInWhichTheyWereMade) {
  if (GetParam().name == "Machine") GTEST_SKIP() << "Windows has an order of its own";
  SetNames({"b", "a", "\xE9", "longest name", "c"});
  EXPECT_THAT(Names(key), ElementsAre("b", "a", "\xE9", "longest name", "c"));
}

TEST_P(Enumeration, InformationHasTheNumberAndTheLongestName) {
  SetNames({"b", "longest name", "c"});
  std::uint32_t count = 0;
  std::uint32_t longest = 0;
  EXPECT_EQ(registry.RegQueryInfoKeyA(key, count, longest), Registry::kSuccess);
  EXPECT_EQ(count, 3U);
  EXPECT_EQ(longest, 12U);
}

TEST_P(Enumeration, ANameKeepsItsFirstSpellingAndItsPlace) {
  SetNames({"First", "Second", "FIRST"});
  EXPECT_THAT(Names(key), ElementsAre("First", "Second"));
}

TEST_P(Enumeration, TheUnnamedValueIsEnumeratedToo) {
  SetNames({"", "a"});
  EXPECT_THAT(Names(key), ElementsAre("", "a"));
}

TEST_P(Enumeration, SubkeysAndTheirValuesAreNotAmongTheNames) {
  SetNames({"a"});
  ASSERT_EQ(Set(Create("Software\\Company\\Sub"), "b", Registry::kSz, "x"), Registry::kSuccess);
  EXPECT_THAT(Names(key), ElementsAre("a"));
  EXPECT_THAT(Names(Open("Software\\Company\\Sub")), ElementsAre("b"));
  EXPECT_THAT(Names(key), ElementsAre("a"));
}

TEST_P(Enumeration, SeesWhatWasWrittenSinceTheLastWalk) {
  SetNames({"a"});
  ASSERT_THAT(Names(key), ElementsAre("a"));
  SetNames({"b"});
  EXPECT_THAT(Names(key), ElementsAre("a", "b"));
}

TEST_P(Enumeration, ABufferWithoutRoomForTheTerminatorIsTooSmall) {
  SetNames({"Name"});
  char buffer[] = "####";
  std::uint32_t size = 4;
  EXPECT_EQ(registry.RegEnumValueA(key, 0, buffer, size), Registry::kMoreData);
  EXPECT_STREQ(buffer, "####");
  size = 5;
  EXPECT_EQ(registry.RegEnumValueA(key, 0, buffer, size), Registry::kSuccess);
  EXPECT_STREQ(buffer, "Name");
  EXPECT_EQ(size, 4U);
}

TEST_P(Enumeration, ABufferTooSmallEvenForAnEmptyNameIsMoreData) {
  SetNames({""});
  std::uint32_t size = 0;
  EXPECT_EQ(registry.RegEnumValueA(key, 0, nullptr, size), Registry::kMoreData);
}

}  // namespace
}  // namespace mirelo::testing
