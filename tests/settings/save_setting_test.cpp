#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "automation/runtime_error.h"
#include "settings/settings_test.h"

namespace mirelo::testing {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

class SaveSetting : public SettingsTest {
 protected:
  void Save(const std::string& key, Variant value) { settings.SaveSetting("Settings", key, value); }

  static void ExpectSaveError(const RuntimeError& error) {
    ExpectError(error, 0x80044281, "Failed saving the application setting", "Mirelo.CAppSetting");
  }
};
INSTANTIATE_TEST_SUITE_P(Registries, SaveSetting, ::testing::ValuesIn(RegistryKinds()), KindName);

TEST_P(SaveSetting, StoresByTheValuesType) {
  struct Row {
    const char* name;
    Variant value;
    std::uint32_t type;
    std::string_view data;
    Variant after;  // what the caller's variable holds then
  };
  const Date moment = ToDate({2011, 1, 20, 8, 36, 13});
  const Row rows[] = {
      {"text", "Blue", Registry::kSz, "Blue\0"sv, "Blue"},
      {"empty text", "", Registry::kSz, "\0"sv, ""},
      {"text of digits", "60", Registry::kSz, "60\0"sv, "60"},
      {"text of the code page", "\u20AC\u00E9", Registry::kSz, "\x80\xE9\0"sv, "\u20AC\u00E9"},
      {"text outside the code page", "\u0416", Registry::kSz, "?\0"sv, "\u0416"},
      {"text with a NUL inside", Variant(std::string("a\0b", 3)), Registry::kSz, "a\0b\0"sv,
       Variant(std::string("a\0b", 3))},
      {"date", moment, Registry::kSz, "1/20/2011 8:36:13 AM\0"sv, moment},
      {"true", true, Registry::kSz, "True\0"sv, true},
      {"false", false, Registry::kSz, "False\0"sv, false},
      {"16-bit integer", std::int16_t{-2}, Registry::kDword, "\xFE\xFF\xFF\xFF"sv, -2},
      {"32-bit integer", 10000, Registry::kDword, "\x10\x27\0\0"sv, 10000},
      {"float", 9.0, Registry::kDword, "\x09\0\0\0"sv, 9},
      {"half to even, down", 2.5, Registry::kDword, "\x02\0\0\0"sv, 2},
      {"half to even, up", 3.5, Registry::kDword, "\x04\0\0\0"sv, 4},
      {"nothing", Variant(), Registry::kDword, "\0\0\0\0"sv, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Variant value = row.value;
    settings.SaveSetting("Settings", "Name", value);
    EXPECT_EQ(Find("Name"), (Stored{row.type, std::string(row.data)}));
    EXPECT_EQ(value.type(), row.after.type());
    EXPECT_EQ(value, row.after);
  }
}

TEST_P(SaveSetting, WritesDatesInTheUsersForm) {
  clock.regional.short_date = "dd.mm.yyyy";
  clock.regional.long_time = "hh:nn:ss";
  Save("Name", ToDate({2011, 1, 20, 8, 36, 13}));
  EXPECT_EQ(Find("Name"), (Stored{Registry::kSz, "20.01.2011 08:36:13"s + '\0'}));
}

TEST_P(SaveSetting, ABooleanReadsBackAsText) {
  Save("Name", true);
  const Variant got = settings.GetSetting("Settings", "Name", false);
  EXPECT_TRUE(got.IsText());
  EXPECT_EQ(got.ToText(), "True");
}

TEST_P(SaveSetting, WhatWasSavedIsReadBack) {
  for (const Variant& value : {Variant("Blue"), Variant(" blanks "), Variant(""), Variant(60), Variant(-7)}) {
    SCOPED_TRACE(value.ToText());
    Save("Name", value);
    const Variant got = settings.GetSetting("Settings", "Name", true);
    EXPECT_EQ(got.type(), value.type());
    EXPECT_EQ(got, value);
  }
}

TEST_P(SaveSetting, OpensTheSectionForEveryUse) {
  Save("Name", "x");
  EXPECT_EQ(registry.LastAccess(), 0x3FU);
}

TEST_P(SaveSetting, MakesTheSection) {
  Save("Name", "x");
  EXPECT_TRUE(HasKey("Software\\Kestrin\\Dovanta2\\Settings"));
}

TEST_P(SaveSetting, KeepsTheFirstSpellingOfAName) {
  Save("ListRight", "a");
  Save("LISTRIGHT", "b");
  Array<std::string> keys;
  ASSERT_TRUE(settings.GetAllKeys("Settings", keys));
  EXPECT_EQ(keys.UBound(), 1);
  EXPECT_EQ(keys(1), "ListRight");
  EXPECT_EQ(settings.GetSetting("Settings", "ListRight", ""), Variant("b"));
}

TEST_P(SaveSetting, RaisesTheSaveErrorWhenTheRegistryRefuses) {
  for (const char* call : {"RegCreateKeyExA", "RegSetValueExA"}) {
    for (const Variant& value :
         {Variant("x"), Variant(true), Variant(ToDate({2011, 1, 20, 0, 0, 0})), Variant(7)}) {
      SCOPED_TRACE(call);
      registry.Fail(call, 1, Registry::kAccessDenied);
      ExpectSaveError(ErrorOf([&] { Save("Name", value); }));
      EXPECT_FALSE(Find("Name"));
    }
  }
}

TEST_P(SaveSetting, LeavesTheCallersIntegerConvertedWhenItCannotBeStored) {
  const std::pair<Variant, Variant> rows[] = {
      {2.5, 2}, {std::int16_t{7}, 7}, {"60", "60"}, {true, true}, {Variant(), 0}};
  for (const auto& [given, after] : rows) {
    SCOPED_TRACE(given.TypeName());
    Variant value = given;
    registry.Fail("RegSetValueExA");
    ExpectSaveError(ErrorOf([&] { settings.SaveSetting("Settings", "Name", value); }));
    EXPECT_EQ(value.type(), after.type());
    EXPECT_EQ(value, after);
  }
}

TEST_P(SaveSetting, LeavesTheCallersValueWhenTheSectionCannotBeMade) {
  Variant value = 2.5;
  registry.Fail("RegCreateKeyExA");
  ExpectSaveError(ErrorOf([&] { settings.SaveSetting("Settings", "Name", value); }));
  EXPECT_EQ(value.type(), Variant::Type::Double);
}

TEST_P(SaveSetting, RaisesAComponentFailureForWhatNobodyForesaw) {
  for (const char* call : {"RegCreateKeyExA", "RegSetValueExA"}) {
    SCOPED_TRACE(call);
    registry.Raise(call);
    ExpectComponentFailure(ErrorOf([&] { Save("Name", "x"); }));
  }
}

TEST_P(SaveSetting, RaisesAComponentFailureForAValueThatIsNoInteger) {
  const Variant values[] = {3e9, std::shared_ptr<Object>(), VariantArray(1, 2)};
  for (const Variant& value : values) {
    SCOPED_TRACE(value.TypeName());
    ExpectComponentFailure(ErrorOf([&] { Save("Name", value); }));
    EXPECT_FALSE(Find("Name"));
    EXPECT_TRUE(HasKey(std::string(kSettingsPath))) << "the section is made first";
    inner.RegDeleteKeyA(Registry::kCurrentUser, std::string(kSettingsPath));
  }
}

TEST(SaveSettingWithoutAHost, IsAComponentFailure) {
  CAppSettings settings;
  ExpectComponentFailure(ErrorOf([&] { settings.SaveSetting("Settings", "Name", "x"); }));
}

}  // namespace
}  // namespace mirelo::testing
