#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "automation/runtime_error.h"
#include "settings/settings_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

class GetAllKeys : public SettingsTest {
 protected:
  // An array that holds something already.
  static Array<std::string> Filled() {
    Array<std::string> keys(0, 2);
    keys(0) = "old";
    return keys;
  }
  static std::vector<std::string> Of(const Array<std::string>& keys) { return {keys.begin(), keys.end()}; }

  Array<std::string> keys = Filled();
};
INSTANTIATE_TEST_SUITE_P(Registries, GetAllKeys, ::testing::ValuesIn(RegistryKinds()), KindName);

TEST_P(GetAllKeys, GivesTheNamesFromIndexOne) {
  settings.SaveSetting("Settings\\WidthField", "Ticker", 1700);
  settings.SaveSetting("Settings\\WidthField", "Charts (Last & Volume)", 1700);
  settings.SaveSetting("Settings\\WidthField", "\u20AC", 800);
  EXPECT_TRUE(settings.GetAllKeys("Settings\\WidthField", keys));
  EXPECT_EQ(keys.LBound(), 1);
  EXPECT_EQ(keys.UBound(), 3);
  EXPECT_THAT(Of(keys), UnorderedElementsAre("Ticker", "Charts (Last & Volume)", "\u20AC"));
}

TEST_P(GetAllKeys, LeavesTheArrayUnallocatedForAnEmptySection) {
  settings.SaveSetting("Settings\\WidthField", "Ticker", 1700);
  EXPECT_TRUE(settings.GetAllKeys("Settings", keys));
  EXPECT_FALSE(keys.IsAllocated());
}

TEST_P(GetAllKeys, IsFalseForAnAbsentSection) {
  EXPECT_FALSE(settings.GetAllKeys("Settings", keys));
  EXPECT_FALSE(keys.IsAllocated());
}

TEST_P(GetAllKeys, IsFalseWhenTheSectionCannotBeOpened) {
  settings.SaveSetting("Settings", "Name", 1);
  registry.Fail("RegOpenKeyExA", 1, Registry::kAccessDenied);
  EXPECT_FALSE(settings.GetAllKeys("Settings", keys));
}

TEST_P(GetAllKeys, OpensTheSectionForQueriesOnly) {
  settings.GetAllKeys("Settings", keys);
  EXPECT_EQ(registry.LastAccess(), 1U);
}

// Without the longest length there is no room for any name.
TEST_P(GetAllKeys, FindsNoNamesWhenTheRegistryDoesNotTellTheirLength) {
  settings.SaveSetting("Settings", "a", 1);
  registry.Fail("RegQueryInfoKeyA");
  EXPECT_TRUE(settings.GetAllKeys("Settings", keys));
  EXPECT_FALSE(keys.IsAllocated());
}

TEST_P(GetAllKeys, KeepsTheNamesBeforeAFailure) {
  settings.SaveSetting("Settings", "a", 1);
  settings.SaveSetting("Settings", "b", 1);
  registry.Fail("RegEnumValueA", 2);
  EXPECT_TRUE(settings.GetAllKeys("Settings", keys));
  EXPECT_THAT(Of(keys), ElementsAre("a"));
}

TEST_P(GetAllKeys, RaisesNothing) {
  settings.SaveSetting("Settings", "a", 1);
  for (const char* call : {"RegOpenKeyExA", "RegQueryInfoKeyA", "RegEnumValueA"}) {
    SCOPED_TRACE(call);
    registry.Raise(call);
    EXPECT_FALSE(settings.GetAllKeys("Settings", keys));
  }
}

TEST(GetAllKeysWithoutAHost, IsFalse) {
  CAppSettings settings;
  Array<std::string> keys;
  EXPECT_FALSE(settings.GetAllKeys("Settings", keys));
}

class DeleteSetting : public SettingsTest {
 protected:
  static void ExpectDeleteError(const RuntimeError& error) {
    ExpectError(error, 0x80044282, "Failed deleting the application setting", "Mirelo.CAppSetting");
  }
};
INSTANTIATE_TEST_SUITE_P(Registries, DeleteSetting, ::testing::ValuesIn(RegistryKinds()), KindName);

TEST_P(DeleteSetting, DeletesASubkeyOfTheSection) {
  settings.SaveSetting("Settings\\QuoteSource\\List", "Name", "x");
  settings.DeleteSetting("Settings\\QuoteSource", "List");
  EXPECT_FALSE(HasKey("Software\\Kestrin\\Dovanta2\\Settings\\QuoteSource\\List"));
  EXPECT_TRUE(HasKey("Software\\Kestrin\\Dovanta2\\Settings\\QuoteSource"));
}

TEST_P(DeleteSetting, WithoutAKeyDeletesTheSection) {
  settings.SaveSetting("Settings\\WidthField", "Ticker", 1700);
  settings.DeleteSetting("Settings\\WidthField", "");
  EXPECT_FALSE(HasKey("Software\\Kestrin\\Dovanta2\\Settings\\WidthField"));
}

TEST_P(DeleteSetting, AsksForTheSectionAndBehindABackslashForItsKey) {
  settings.SaveSetting("Settings\\QuoteSource\\Caf\u00E9", "Name", "x");
  settings.DeleteSetting("Settings\\QuoteSource", "Caf\u00E9");
  EXPECT_EQ(registry.LastPath(), "Software\\Kestrin\\Dovanta2\\Settings\\QuoteSource\\Caf\xE9");
  settings.DeleteSetting("Settings\\QuoteSource", "");
  EXPECT_EQ(registry.LastPath(), "Software\\Kestrin\\Dovanta2\\Settings\\QuoteSource");
}

TEST_P(DeleteSetting, DeletesNoValue) {
  settings.SaveSetting("Settings", "Seconds", 60);
  ExpectDeleteError(ErrorOf([&] { settings.DeleteSetting("Settings", "Seconds"); }));
  EXPECT_EQ(settings.GetSetting("Settings", "Seconds", 0), Variant(60));
}

TEST_P(DeleteSetting, RefusesASectionWithSectionsBelowIt) {
  settings.SaveSetting("Settings\\WidthField", "Ticker", 1700);
  ExpectDeleteError(ErrorOf([&] { settings.DeleteSetting("Settings", ""); }));
  EXPECT_TRUE(HasKey("Software\\Kestrin\\Dovanta2\\Settings\\WidthField"));
}

TEST_P(DeleteSetting, RefusesWhatIsNotThere) {
  ExpectDeleteError(ErrorOf([&] { settings.DeleteSetting("Settings", ""); }));
}

TEST_P(DeleteSetting, RaisesTheDeleteErrorWhenTheRegistryRefuses) {
  settings.SaveSetting("Settings", "Name", 1);
  registry.Fail("RegDeleteKeyA", 1, Registry::kAccessDenied);
  ExpectDeleteError(ErrorOf([&] { settings.DeleteSetting("Settings", ""); }));
  EXPECT_TRUE(HasKey(std::string(kSettingsPath)));
}

TEST_P(DeleteSetting, RaisesAComponentFailureForWhatNobodyForesaw) {
  registry.Raise("RegDeleteKeyA");
  ExpectComponentFailure(ErrorOf([&] { settings.DeleteSetting("Settings", ""); }));
}

}  // namespace
}  // namespace mirelo::testing
