#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "registry/tested_registries.h"

namespace mirelo::testing {
namespace {

using namespace std::string_view_literals;

class ValueCalls : public RegistryCalls {
 protected:
  Registry::Key key = Create("Software\\Company");
};
INSTANTIATE_TEST_SUITE_P(Registries, ValueCalls, ::testing::ValuesIn(RegistryKinds()), KindName);

TEST_P(ValueCalls, GivesBackKindAndBytesAsTheyWereSet) {
  struct Row {
    const char* name;
    std::uint32_t type;
    std::string_view data;
  };
  const Row rows[] = {
      {"Text", Registry::kSz, "Blue\0"sv},
      {"TextWithoutTerminator", Registry::kSz, "Blue"sv},
      {"TextWithANulInside", Registry::kSz, "a\0b\0"sv},
      {"TextOfThePage", Registry::kSz, "\x80\xE9\xFF\0"sv},
      {"EmptyText", Registry::kSz, "\0"sv},
      {"NoBytes", Registry::kSz, ""sv},
      {"Number", Registry::kDword, "\x10\x27\0\0"sv},
      {"Binary", Registry::kBinary, "\0\x01\xFE\xFF"sv},
      {"NoBinary", Registry::kBinary, ""sv},
      {"AnotherKind", 7, "a\0b\0\0"sv},
      {"", Registry::kSz, "the unnamed value\0"sv},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Set(key, row.name, row.type, row.data), Registry::kSuccess);
  }
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Query(key, row.name), (Answer{Registry::kSuccess, row.type, std::string(row.data)}));
  }
}

TEST_P(ValueCalls, KeepsLargeValues) {
  const std::string large(1 << 20, '\x9A');
  ASSERT_EQ(Set(key, "Large", Registry::kBinary, large), Registry::kSuccess);
  EXPECT_TRUE(Query(key, "Large").data == large);
}

TEST_P(ValueCalls, TakesANullPointerForNoBytesOnly) {
  EXPECT_EQ(registry.RegSetValueExA(key, "Name", Registry::kSz, nullptr, 0), Registry::kSuccess);
  EXPECT_EQ(Query(key, "Name"), (Answer{Registry::kSuccess, Registry::kSz, ""}));
  EXPECT_EQ(registry.RegSetValueExA(key, "Name", Registry::kSz, nullptr, 1), Registry::kInvalidParameter);
}

TEST_P(ValueCalls, AnAbsentValueIsNotFound) {
  EXPECT_EQ(Query(key, "Name").code, Registry::kFileNotFound);
  EXPECT_EQ(Query(key, "").code, Registry::kFileNotFound);
}

TEST_P(ValueCalls, SettingAgainReplacesKindAndBytes) {
  ASSERT_EQ(Set(key, "Name", Registry::kSz, "a long text\0"sv), Registry::kSuccess);
  ASSERT_EQ(Query(key, "Name").type, Registry::kSz);
  ASSERT_EQ(Set(key, "Name", Registry::kDword, "\1\0\0\0"sv), Registry::kSuccess);
  EXPECT_EQ(Query(key, "Name"), (Answer{Registry::kSuccess, Registry::kDword, std::string("\1\0\0\0", 4)}));
}

TEST_P(ValueCalls, NamesAreFoundWithoutRegardToCase) {
  ASSERT_EQ(Set(key, "\xC9tat \x8A", Registry::kSz, "1"), Registry::kSuccess);
  ASSERT_EQ(Set(key, "\xE9TAT \x9A", Registry::kSz, "2"), Registry::kSuccess);
  EXPECT_EQ(Query(key, "\xC9tat \x8A").data, "2");
  EXPECT_EQ(Query(key, "\xC9TAT \x9A").data, "2");
  EXPECT_EQ(Query(key, "Etat S").code, Registry::kFileNotFound);
}

TEST_P(ValueCalls, ValuesAndSubkeysOfOneNameAreTwoThings) {
  Create("Software\\Company\\Name");
  EXPECT_EQ(Query(key, "Name").code, Registry::kFileNotFound);
  EXPECT_EQ(Set(key, "Name", Registry::kSz, "x"), Registry::kSuccess);
  EXPECT_EQ(OpenCode("Software\\Company\\Name"), Registry::kSuccess);
}

TEST_P(ValueCalls, ABackslashIsALetterOfAValuesName) {
  ASSERT_EQ(Set(key, "a\\b", Registry::kSz, "x"), Registry::kSuccess);
  EXPECT_EQ(Query(key, "A\\B").data, "x");
  EXPECT_EQ(OpenCode("Software\\Company\\a"), Registry::kFileNotFound);
}

TEST_P(ValueCalls, NamesEndAtANul) {
  ASSERT_EQ(Set(key, std::string("Name\0hidden", 11), Registry::kSz, "x"), Registry::kSuccess);
  EXPECT_EQ(Query(key, "Name").data, "x");
  EXPECT_EQ(Query(key, std::string("Name\0other", 10)).data, "x");
}

TEST_P(ValueCalls, NamesHaveAtMost16383Bytes) {
  EXPECT_EQ(Set(key, std::string(16383, 'n'), Registry::kSz, "x"), Registry::kSuccess);
  EXPECT_EQ(Query(key, std::string(16383, 'N')).data, "x");
  EXPECT_EQ(Set(key, std::string(16384, 'n'), Registry::kSz, "x"), Registry::kInvalidParameter);
}

TEST_P(ValueCalls, ABufferTooSmallStaysUntouchedAndLearnsTheSize) {
  ASSERT_EQ(Set(key, "Name", Registry::kSz, "Blue\0"sv), Registry::kSuccess);
  char buffer[] = "####";
  std::uint32_t type = 0;
  std::uint32_t size = 4;
  EXPECT_EQ(registry.RegQueryValueExA(key, "Name", type, buffer, size), Registry::kMoreData);
  EXPECT_STREQ(buffer, "####");
  EXPECT_EQ(size, 5U);
}

TEST_P(ValueCalls, ALargeBufferKeepsWhatLiesBehindTheValue) {
  ASSERT_EQ(Set(key, "Name", Registry::kBinary, "ab"), Registry::kSuccess);
  char buffer[] = "####";
  std::uint32_t type = 0;
  std::uint32_t size = 4;
  EXPECT_EQ(registry.RegQueryValueExA(key, "Name", type, buffer, size), Registry::kSuccess);
  EXPECT_STREQ(buffer, "ab##");
  EXPECT_EQ(size, 2U);
  EXPECT_EQ(type, Registry::kBinary);
}

TEST_P(ValueCalls, ARootHoldsValuesToo) {
  EXPECT_EQ(Set(Registry::kCurrentUser, "Name", Registry::kSz, "x"), Registry::kSuccess);
  EXPECT_EQ(Query(Registry::kCurrentUser, "name").data, "x");
  EXPECT_EQ(Query(Registry::kLocalMachine, "name").code, Registry::kFileNotFound);
}

TEST_P(ValueCalls, AllHandlesOfAKeySeeWhatOneWrites) {
  const auto other = Open("Software\\Company");
  ASSERT_EQ(Query(other, "Name").code, Registry::kFileNotFound);
  ASSERT_EQ(Set(key, "Name", Registry::kSz, "1"), Registry::kSuccess);
  EXPECT_EQ(Query(other, "Name").data, "1");
  ASSERT_EQ(Set(key, "Name", Registry::kSz, "2"), Registry::kSuccess);
  EXPECT_EQ(Query(other, "Name").data, "2");
}

// More spellings than a registry would want to remember.
TEST_P(ValueCalls, ANameIsFoundInEverySpelling) {
  const std::string name = "abcdefghijklm";
  ASSERT_EQ(Set(key, name, Registry::kSz, "x"), Registry::kSuccess);
  for (unsigned capitals = 0; capitals < 1U << name.size(); ++capitals) {
    std::string spelling = name;
    for (std::size_t i = 0; i < name.size(); ++i) {
      if ((capitals >> i & 1U) != 0) spelling[i] = static_cast<char>(spelling[i] - 'a' + 'A');
    }
    ASSERT_EQ(Query(key, spelling).data, "x") << spelling;
  }
}

TEST_P(ValueCalls, ManyNamesAreAllFoundAgain) {
  for (int i = 0; i < 60; ++i) {
    ASSERT_EQ(Set(key, "Name" + std::to_string(i), Registry::kSz, std::to_string(i)), Registry::kSuccess);
  }
  for (int i = 0; i < 60; ++i) EXPECT_EQ(Query(key, "NAME" + std::to_string(i)).data, std::to_string(i));
}

}  // namespace
}  // namespace mirelo::testing
