#include <cstdint>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "automation/runtime_error.h"
#include "settings/settings_test.h"

namespace mirelo::testing {
namespace {

TEST(AppSettingsFields, StartWithTheirDefaults) {
  const CAppSettings settings;
  EXPECT_EQ(settings.RootKey(), 0x80000001U);
  EXPECT_EQ(settings.MainBranch(), "Software");
  EXPECT_EQ(settings.CompanyName(), "Kestrin");
  EXPECT_EQ(settings.AppName(), "Tomvale");
}

TEST(AppSettingsFields, InitSetsCompanyAndApplication) {
  CAppSettings settings;
  settings.Init("Company", "Program");
  EXPECT_EQ(settings.CompanyName(), "Company");
  EXPECT_EQ(settings.AppName(), "Program");
  EXPECT_EQ(settings.MainBranch(), "Software");
}

TEST(AppSettingsFields, KeepWhatTheyAreGiven) {
  CAppSettings settings;
  settings.AppName("Program");
  settings.CompanyName("Company");
  settings.MainBranch("Branch");
  EXPECT_EQ(settings.AppName(), "Program");
  EXPECT_EQ(settings.CompanyName(), "Company");
  EXPECT_EQ(settings.MainBranch(), "Branch");
}

TEST(AppSettingsFields, RefuseEmptyTexts) {
  struct Row {
    const char* name;
    std::function<void(CAppSettings&)> act;
    std::uint32_t number;
    const char* description;
  };
  const Row rows[] = {
      {"AppName", [](CAppSettings& s) { s.AppName(""); }, 0x8004427D, "Invalid AppName value"},
      {"CompanyName", [](CAppSettings& s) { s.CompanyName(""); }, 0x8004427E, "Invalid CompanyName value"},
      {"MainBranch", [](CAppSettings& s) { s.MainBranch(""); }, 0x8004427F, "Invalid MainBranch value"},
      {"Init application", [](CAppSettings& s) { s.Init("Kestrin", ""); }, 0x8004427D,
       "Invalid AppName value"},
      {"Init company", [](CAppSettings& s) { s.Init("", "Program"); }, 0x8004427E,
       "Invalid CompanyName value"},
      {"Init both", [](CAppSettings& s) { s.Init("", ""); }, 0x8004427E, "Invalid CompanyName value"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    CAppSettings settings;
    ExpectError(ErrorOf([&] { row.act(settings); }), row.number, row.description, "Mirelo.CAppSettings");
    EXPECT_EQ(settings.AppName(), "Tomvale");
    EXPECT_EQ(settings.CompanyName(), "Kestrin");
    EXPECT_EQ(settings.MainBranch(), "Software");
  }
}

TEST(AppSettingsFields, InitKeepsTheCompanyWhenItRefusesTheApplication) {
  CAppSettings settings;
  EXPECT_THROW(settings.Init("Company", ""), RuntimeError);
  EXPECT_EQ(settings.CompanyName(), "Company");
  EXPECT_EQ(settings.AppName(), "Tomvale");
}

TEST(AppSettingsFields, RootKeyIsTheUsersOrTheMachines) {
  CAppSettings settings;
  settings.RootKey(Registry::kLocalMachine);
  EXPECT_EQ(settings.RootKey(), Registry::kLocalMachine);
  settings.RootKey(Registry::kCurrentUser);
  EXPECT_EQ(settings.RootKey(), Registry::kCurrentUser);

  settings.RootKey(Registry::kLocalMachine);
  for (const Registry::Key root : {Registry::kClassesRoot, Registry::kUsers, Registry::Key{0x80000005},
                                   Registry::Key{0}, Registry::Key{1}}) {
    SCOPED_TRACE(root);
    ExpectError(ErrorOf([&] { settings.RootKey(root); }), 0x80044280, "Invalid root key value",
                "Mirelo.CAppSettings");
    EXPECT_EQ(settings.RootKey(), Registry::kLocalMachine);
  }
}

class AppSettingsPath : public SettingsTest {};
INSTANTIATE_TEST_SUITE_P(Registries, AppSettingsPath, ::testing::ValuesIn(RegistryKinds()), KindName);

TEST_P(AppSettingsPath, JoinsTheFieldsAndTheSection) {
  settings.SaveSetting("Settings\\QuoteSource\\List", "Name", 1);
  EXPECT_TRUE(Find("Name", "Software\\Kestrin\\Dovanta2\\Settings\\QuoteSource\\List"));

  settings.Init("Company", "Program");
  settings.MainBranch("Branch");
  settings.RootKey(Registry::kLocalMachine);
  settings.SaveSetting("Section", "Name", 1);
  EXPECT_TRUE(Find("Name", "Branch\\Company\\Program\\Section", Registry::kLocalMachine));
  EXPECT_FALSE(Find("Name", "Branch\\Company\\Program\\Section", Registry::kCurrentUser));
}

TEST_P(AppSettingsPath, HasSingleBackslashesAndNoneAtItsEnds) {
  constexpr const char* kPath = "Software\\Kestrin\\Dovanta2\\Settings";
  settings.SaveSetting("Settings", "Name", 1);
  EXPECT_EQ(registry.LastPath(), kPath);
  settings.GetSetting("Settings", "Name", 0);
  EXPECT_EQ(registry.LastPath(), kPath);
  Array<std::string> keys;
  settings.GetAllKeys("Settings", keys);
  EXPECT_EQ(registry.LastPath(), kPath);
}

TEST_P(AppSettingsPath, CrossesTheCodePage) {
  settings.Init("Caf\u00E9", "\u20AC");
  settings.SaveSetting("\u017D", "Name", 1);
  EXPECT_TRUE(Find("Name", "Software\\Caf\xE9\\\x80\\\x8E"));
}

}  // namespace
}  // namespace mirelo::testing
