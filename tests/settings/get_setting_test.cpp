#include <cstdint>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "settings/settings_test.h"

namespace mirelo::testing {
namespace {

using namespace std::string_view_literals;

class GetSetting : public SettingsTest {
 protected:
  Variant Get(const std::string& key, const Variant& default_value = "default") {
    return settings.GetSetting("Settings", key, default_value);
  }
  // The default came back, with its own type.
  void ExpectDefault(const std::string& key) {
    for (const Variant& value : {Variant("default"), Variant(std::int16_t{20}), Variant(60), Variant()}) {
      const Variant got = Get(key, value);
      EXPECT_EQ(got.type(), value.type());
      EXPECT_EQ(got, value);
    }
  }
};
INSTANTIATE_TEST_SUITE_P(Registries, GetSetting, ::testing::ValuesIn(RegistryKinds()), KindName);

TEST_P(GetSetting, OfAnAbsentSectionIsTheDefault) { ExpectDefault("Seconds"); }

TEST_P(GetSetting, OfAnAbsentValueIsTheDefault) {
  Put("Other", Registry::kSz, "x\0"sv);
  ExpectDefault("Seconds");
}

TEST_P(GetSetting, GivesATextOrAnIntegerAsItWasStored) {
  struct Row {
    const char* name;
    std::uint32_t type;
    std::string_view data;
    Variant value;
  };
  const Row rows[] = {
      {"a text", Registry::kSz, "Blue\0"sv, "Blue"},
      {"a text of digits", Registry::kSz, "60\0"sv, "60"},
      {"an empty text", Registry::kSz, "\0"sv, ""},
      {"a text of the code page", Registry::kSz, "\x80 \xE9\0"sv, "\u20AC \u00E9"},
      {"a text with a NUL inside", Registry::kSz, "a\0b\0"sv, Variant(std::string("a\0b", 3))},
      {"a text without terminator", Registry::kSz, "Blue"sv, "Blu"},
      {"an integer", Registry::kDword, "\x10\x27\0\0"sv, 10000},
      {"zero", Registry::kDword, "\0\0\0\0"sv, 0},
      {"a negative integer", Registry::kDword, "\xF9\xFF\xFF\xFF"sv, -7},
      {"the least integer", Registry::kDword, "\0\0\0\x80"sv, INT32_MIN},
      {"an integer of two bytes", Registry::kDword, "\x10\x27"sv, 10000},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Put("Name", row.type, row.data);
    const Variant got = Get("Name", true);
    EXPECT_EQ(got.type(), row.value.type());
    EXPECT_EQ(got, row.value);
  }
}

TEST_P(GetSetting, OfAnotherKindIsTheDefault) {
  for (const std::uint32_t type : {Registry::kBinary, std::uint32_t{0}, std::uint32_t{2}, std::uint32_t{7}}) {
    SCOPED_TRACE(type);
    Put("Name", type, "x\0"sv);
    ExpectDefault("Name");
  }
}

TEST_P(GetSetting, OfAnIntegerOfEightBytesIsTheDefault) {
  Put("Name", Registry::kDword, "\1\0\0\0\0\0\0\0"sv);
  ExpectDefault("Name");
}

TEST_P(GetSetting, OfATextWithoutAnyByteIsAComponentFailure) {
  Put("Name", Registry::kSz, ""sv);
  ExpectComponentFailure(ErrorOf([&] { Get("Name"); }));
}

TEST_P(GetSetting, FindsNamesWithoutRegardToCase) {
  Put("ListRight", Registry::kSz, "Ticker\0"sv);
  EXPECT_EQ(settings.GetSetting("SETTINGS", "LISTright", ""), Variant("Ticker"));
}

TEST_P(GetSetting, FindsAnEmptyKeyAsTheUnnamedValue) {
  Put("", Registry::kSz, "x\0"sv);
  EXPECT_EQ(Get(""), Variant("x"));
}

TEST_P(GetSetting, AsksForNamesInTheCodePage) {
  Put("Cl\xE9", Registry::kSz, "x\0"sv);
  EXPECT_EQ(Get("Cl\u00E9"), Variant("x"));
}

TEST_P(GetSetting, OpensTheSectionForReadingOnly) {
  Get("Name");
  EXPECT_EQ(registry.LastAccess(), 0x20019U);
}

TEST_P(GetSetting, IsTheDefaultWhenTheRegistryRefuses) {
  Put("Text", Registry::kSz, "x\0"sv);
  Put("Number", Registry::kDword, "\1\0\0\0"sv);
  struct Row {
    const char* call;
    int countdown;
    const char* key;
  };
  constexpr Row rows[] = {
      {"RegOpenKeyExA", 1, "Text"},
      {"RegQueryValueExA", 1, "Text"},
      {"RegQueryValueExA", 2, "Text"},
      {"RegQueryValueExA", 2, "Number"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.call);
    registry.Fail(row.call, row.countdown);
    EXPECT_EQ(Get(row.key), Variant("default"));
    EXPECT_NE(Get(row.key), Variant("default")) << "the next time it works";
  }
}

TEST_P(GetSetting, RaisesAComponentFailureForWhatNobodyForesaw) {
  Put("Name", Registry::kSz, "x\0"sv);
  for (const char* call : {"RegOpenKeyExA", "RegQueryValueExA"}) {
    SCOPED_TRACE(call);
    registry.Raise(call);
    ExpectComponentFailure(ErrorOf([&] { Get("Name"); }));
  }
}

TEST(GetSettingWithoutAHost, IsAComponentFailure) {
  CAppSettings settings;
  ExpectComponentFailure(ErrorOf([&] { settings.GetSetting("Settings", "Name", ""); }));
}

}  // namespace
}  // namespace mirelo::testing
