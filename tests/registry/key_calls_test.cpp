#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "registry/tested_registries.h"

namespace mirelo::testing {
namespace {

constexpr Registry::Key kRoots[] = {Registry::kClassesRoot, Registry::kCurrentUser, Registry::kLocalMachine,
                                    Registry::kUsers};

class KeyCalls : public RegistryCalls {};
INSTANTIATE_TEST_SUITE_P(Registries, KeyCalls, ::testing::ValuesIn(RegistryKinds()), KindName);

TEST_P(KeyCalls, OpenOfAnAbsentKeyFindsNothing) {
  EXPECT_EQ(OpenCode("Software"), Registry::kFileNotFound);
  EXPECT_EQ(OpenCode("Software\\Company"), Registry::kFileNotFound);
}

TEST_P(KeyCalls, CreateMakesAllKeysOnTheWay) {
  Create("Software\\Company\\Program");
  EXPECT_EQ(OpenCode("Software"), Registry::kSuccess);
  EXPECT_EQ(OpenCode("Software\\Company"), Registry::kSuccess);
  EXPECT_EQ(OpenCode("Software\\Company\\Program"), Registry::kSuccess);
  EXPECT_EQ(OpenCode("Company"), Registry::kFileNotFound);
}

TEST_P(KeyCalls, CreateOpensAKeyThatIsThere) {
  const auto first = Create("Software");
  ASSERT_EQ(Set(first, "Name", Registry::kSz, "kept"), Registry::kSuccess);
  EXPECT_EQ(Query(Create("Software"), "Name").data, "kept");
}

TEST_P(KeyCalls, EachRootHasATreeOfItsOwn) {
  for (const auto root : kRoots) {
    SCOPED_TRACE(root);
    EXPECT_EQ(OpenCode("Software", root), Registry::kFileNotFound);
    Registry::Key key = 0;
    EXPECT_EQ(registry.RegCreateKeyExA(root, "Software", Registry::kAllAccess, key), Registry::kSuccess);
    EXPECT_EQ(OpenCode("Software", root), Registry::kSuccess);
  }
}

TEST_P(KeyCalls, OpenFindsKeysWithoutRegardToCase) {
  struct Row {
    const char* made;
    const char* asked;
    bool same;
  };
  const Row rows[] = {
      {"Settings", "SETTINGS", true},
      {"Gr\xF6\xDF"
       "e",
       "gR\xD6\xDF"
       "E",
       true},  // o with diaeresis; sharp s has no capital
      {"\x8A\x8C\x8E\x9F", "\x9A\x9C\x9E\xFF",
       true},                   // S, OE, Z and Y with their marks, from the page's own rows
      {"\xD7", "\xF7", false},  // the multiplication and the division sign
      {"\xDF", "\xFF", false},
      {"\xB5", "\xC5", false},
      {"A[", "a{", false},
      {"A@", "a`", false},
  };
  int number = 0;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.made);
    const std::string parent = "Row" + std::to_string(number++) + "\\";
    Create(parent + row.made);
    EXPECT_EQ(OpenCode(parent + row.asked), row.same ? Registry::kSuccess : Registry::kFileNotFound);
  }
}

TEST_P(KeyCalls, CreateInOtherLettersMakesNoSecondKey) {
  const auto made = Create("Software\\Company");
  ASSERT_EQ(Set(made, "Name", Registry::kSz, "x"), Registry::kSuccess);
  EXPECT_EQ(Query(Create("SOFTWARE\\company"), "Name").data, "x");
}

TEST_P(KeyCalls, PathsStartAtTheHandle) {
  const auto software = Create("Software");
  Create("Software\\Company");
  EXPECT_EQ(OpenCode("Company", software), Registry::kSuccess);
  EXPECT_EQ(OpenCode("Software", software), Registry::kFileNotFound);
}

TEST_P(KeyCalls, EmptyPathIsTheKeyItself) {
  const auto key = Create("Software");
  ASSERT_EQ(Set(key, "Name", Registry::kSz, "x"), Registry::kSuccess);
  Registry::Key again = 0;
  ASSERT_EQ(registry.RegOpenKeyExA(key, "", Registry::kRead, again), Registry::kSuccess);
  EXPECT_NE(again, key);
  EXPECT_EQ(Query(again, "Name").data, "x");
  ASSERT_EQ(registry.RegCreateKeyExA(key, "", Registry::kRead, again), Registry::kSuccess);
  EXPECT_EQ(Query(again, "Name").data, "x");
}

TEST_P(KeyCalls, BackslashesAtTheEndsAndDoubledSeparateNothing) {
  Create("Software\\Company");
  EXPECT_EQ(OpenCode("Software\\Company\\"), Registry::kSuccess);
  EXPECT_EQ(OpenCode("\\Software\\\\Company"), Registry::kSuccess);
  Create("Software\\Other\\");
  EXPECT_EQ(OpenCode("Software\\Other"), Registry::kSuccess);
}

TEST_P(KeyCalls, NamesEndAtANul) {
  Create(std::string("Software\0Hidden", 15));
  EXPECT_EQ(OpenCode("Software"), Registry::kSuccess);
}

TEST_P(KeyCalls, NamesOfKeysHaveAtMost255Bytes) {
  Create(std::string(255, 'n'));
  EXPECT_EQ(OpenCode(std::string(255, 'N')), Registry::kSuccess);
  Registry::Key key = 0;
  EXPECT_EQ(
      registry.RegCreateKeyExA(Registry::kCurrentUser, "New\\" + std::string(256, 'n'), Registry::kRead, key),
      Registry::kInvalidParameter);
  EXPECT_EQ(OpenCode(std::string(256, 'n')), Registry::kInvalidParameter);
  EXPECT_EQ(OpenCode("New"), Registry::kFileNotFound) << "nothing may be left of a create that failed";
}

TEST_P(KeyCalls, ATooLongNameIsToldBeforeAnAbsentKeyAboveIt) {
  const std::string path = "Absent\\" + std::string(256, 'n');
  EXPECT_EQ(OpenCode(path), Registry::kInvalidParameter);
  EXPECT_EQ(registry.RegDeleteKeyA(Registry::kCurrentUser, path), Registry::kInvalidParameter);
}

TEST_P(KeyCalls, DeleteRemovesTheKeyAndItsValues) {
  ASSERT_EQ(Set(Create("Software\\Company"), "Name", Registry::kSz, "x"), Registry::kSuccess);
  EXPECT_EQ(registry.RegDeleteKeyA(Registry::kCurrentUser, "software\\COMPANY"), Registry::kSuccess);
  EXPECT_EQ(OpenCode("Software\\Company"), Registry::kFileNotFound);
  EXPECT_EQ(OpenCode("Software"), Registry::kSuccess);
  EXPECT_EQ(Query(Create("Software\\Company"), "Name").code, Registry::kFileNotFound);
}

TEST_P(KeyCalls, DeleteRefusesAKeyWithSubkeys) {
  ASSERT_EQ(Set(Create("Software"), "Name", Registry::kSz, "x"), Registry::kSuccess);
  Create("Software\\Company");
  EXPECT_EQ(registry.RegDeleteKeyA(Registry::kCurrentUser, "Software"), Registry::kAccessDenied);
  EXPECT_EQ(OpenCode("Software\\Company"), Registry::kSuccess);
  EXPECT_EQ(Query(Open("Software"), "Name").data, "x");
}

TEST_P(KeyCalls, DeleteOfAnAbsentKeyFindsNothing) {
  EXPECT_EQ(registry.RegDeleteKeyA(Registry::kCurrentUser, "Software"), Registry::kFileNotFound);
}

TEST_P(KeyCalls, DeleteRefusesARoot) {
  for (const auto root : kRoots) {
    SCOPED_TRACE(root);
    EXPECT_EQ(registry.RegDeleteKeyA(root, ""), Registry::kAccessDenied);
  }
}

TEST_P(KeyCalls, DeleteWithAnEmptyPathDeletesTheHandlesKey) {
  const auto key = Create("Software");
  EXPECT_EQ(registry.RegDeleteKeyA(key, ""), Registry::kSuccess);
  EXPECT_EQ(OpenCode("Software"), Registry::kFileNotFound);
}

TEST_P(KeyCalls, HandlesOfADeletedKeyAreDead) {
  const auto key = Create("Software");
  ASSERT_EQ(Set(key, "Name", Registry::kSz, "x"), Registry::kSuccess);
  ASSERT_EQ(Query(key, "Name").data, "x");
  ASSERT_EQ(registry.RegDeleteKeyA(Registry::kCurrentUser, "Software"), Registry::kSuccess);
  Create("Software");  // another key of that name does not bring the handle back

  Registry::Key other = 0;
  std::uint32_t count = 0;
  std::uint32_t size = 10;
  char name[10];
  EXPECT_EQ(registry.RegOpenKeyExA(key, "", Registry::kRead, other), Registry::kKeyDeleted);
  EXPECT_EQ(registry.RegOpenKeyExA(key, "Sub", Registry::kRead, other), Registry::kKeyDeleted);
  EXPECT_EQ(registry.RegCreateKeyExA(key, "Sub", Registry::kRead, other), Registry::kKeyDeleted);
  EXPECT_EQ(Query(key, "Name").code, Registry::kKeyDeleted);
  EXPECT_EQ(registry.RegQueryInfoKeyA(key, count, size), Registry::kKeyDeleted);
  EXPECT_EQ(registry.RegEnumValueA(key, 0, name, size), Registry::kKeyDeleted);
  EXPECT_EQ(Set(key, "Name", Registry::kSz, "x"), Registry::kKeyDeleted);
  EXPECT_EQ(registry.RegDeleteKeyA(key, ""), Registry::kKeyDeleted);
  EXPECT_EQ(registry.RegDeleteKeyA(key, "Sub"), Registry::kKeyDeleted);
  EXPECT_EQ(registry.RegCloseKey(key), Registry::kSuccess);
}

// What is wrong with the names of a call does not matter on a handle that is dead, its rights do.
TEST_P(KeyCalls, HandlesOfADeletedKeyAreDeadWhateverTheCallNames) {
  const auto key = Create("Software");
  const auto reader = Open("Software", Registry::kQueryValue);
  ASSERT_EQ(registry.RegDeleteKeyA(key, ""), Registry::kSuccess);

  const std::string too_long_key(256, 'n');
  const std::string too_long_value(16384, 'n');
  Registry::Key other = 0;
  EXPECT_EQ(registry.RegOpenKeyExA(key, too_long_key, Registry::kRead, other), Registry::kKeyDeleted);
  EXPECT_EQ(registry.RegCreateKeyExA(key, too_long_key, Registry::kRead, other), Registry::kKeyDeleted);
  EXPECT_EQ(registry.RegDeleteKeyA(key, too_long_key), Registry::kKeyDeleted);
  EXPECT_EQ(Query(key, too_long_value).code, Registry::kKeyDeleted);
  EXPECT_EQ(Set(key, too_long_value, Registry::kSz, "x"), Registry::kKeyDeleted);
  EXPECT_EQ(registry.RegSetValueExA(key, "Name", Registry::kSz, nullptr, 1), Registry::kKeyDeleted);
  EXPECT_EQ(Set(reader, "Name", Registry::kSz, "x"), Registry::kAccessDenied);
}

TEST_P(KeyCalls, ClosedAndUnknownHandlesAreInvalid) {
  const auto closed = Create("Software");
  ASSERT_EQ(registry.RegCloseKey(closed), Registry::kSuccess);
  for (const Registry::Key key : {closed, Registry::Key{0}, Registry::Key{4711}, Registry::Key{0x80000004}}) {
    SCOPED_TRACE(key);
    Registry::Key other = 0;
    std::uint32_t count = 0;
    std::uint32_t size = 10;
    char name[10];
    EXPECT_EQ(registry.RegOpenKeyExA(key, "", Registry::kRead, other), Registry::kInvalidHandle);
    EXPECT_EQ(registry.RegCreateKeyExA(key, "Sub", Registry::kRead, other), Registry::kInvalidHandle);
    EXPECT_EQ(Query(key, "Name").code, Registry::kInvalidHandle);
    EXPECT_EQ(registry.RegQueryInfoKeyA(key, count, size), Registry::kInvalidHandle);
    EXPECT_EQ(registry.RegEnumValueA(key, 0, name, size), Registry::kInvalidHandle);
    EXPECT_EQ(Set(key, "Name", Registry::kSz, "x"), Registry::kInvalidHandle);
    EXPECT_EQ(registry.RegDeleteKeyA(key, "Sub"), Registry::kInvalidHandle);
    EXPECT_EQ(registry.RegCloseKey(key), Registry::kInvalidHandle);
  }
}

TEST_P(KeyCalls, ClosingARootSucceedsAndChangesNothing) {
  for (const auto root : kRoots) {
    SCOPED_TRACE(root);
    EXPECT_EQ(registry.RegCloseKey(root), Registry::kSuccess);
    EXPECT_EQ(OpenCode("", root), Registry::kSuccess);
  }
}

TEST_P(KeyCalls, CallsNeedTheRightsThatTheHandleWasOpenedWith) {
  struct Row {
    std::uint32_t access;
    bool may_query;
    bool may_set;
    bool may_create;
  };
  constexpr Row rows[] = {
      {0, false, false, false},
      {Registry::kQueryValue, true, false, false},
      {Registry::kSetValue, false, true, false},
      {Registry::kCreateSubKey, false, false, true},
      {Registry::kEnumerateSubKeys, false, false, false},
      {Registry::kRead, true, false, false},
      {Registry::kAllAccess, true, true, true},
  };
  ASSERT_EQ(Set(Create("Software\\There"), "Name", Registry::kSz, "x"), Registry::kSuccess);
  ASSERT_EQ(Set(Open("Software"), "Name", Registry::kSz, "x"), Registry::kSuccess);

  for (const Row& row : rows) {
    SCOPED_TRACE(row.access);
    const auto code = [](bool allowed) { return allowed ? Registry::kSuccess : Registry::kAccessDenied; };
    const auto key = Open("Software", row.access);
    std::uint32_t count = 0;
    std::uint32_t size = 10;
    char name[10];
    Registry::Key other = 0;
    EXPECT_EQ(Query(key, "Name").code, code(row.may_query));
    EXPECT_EQ(registry.RegQueryInfoKeyA(key, count, size), code(row.may_query));
    size = sizeof name;
    EXPECT_EQ(registry.RegEnumValueA(key, 0, name, size), code(row.may_query));
    EXPECT_EQ(Set(key, "Name", Registry::kSz, "x"), code(row.may_set));
    EXPECT_EQ(registry.RegCreateKeyExA(key, "New" + std::to_string(row.access), Registry::kRead, other),
              code(row.may_create));
    EXPECT_EQ(registry.RegCreateKeyExA(key, "There", Registry::kRead, other), Registry::kSuccess)
        << "nothing has to be made";
  }
}

TEST_P(KeyCalls, DeleteNeedsNoRightOfTheHandle) {
  Create("Software\\Company");
  EXPECT_EQ(registry.RegDeleteKeyA(Open("Software", Registry::kQueryValue), "Company"), Registry::kSuccess);
}

TEST_P(KeyCalls, ACreatedHandleCarriesTheRightsThatWereAskedFor) {
  const auto key = Create("Software", Registry::kQueryValue);
  EXPECT_EQ(Set(key, "Name", Registry::kSz, "x"), Registry::kAccessDenied);
}

}  // namespace
}  // namespace mirelo::testing
