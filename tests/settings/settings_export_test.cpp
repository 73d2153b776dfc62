#include "core/settings_export.h"

#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "automation/runtime_error.h"
#include "settings/settings_test.h"

namespace mirelo::testing {
namespace {

using namespace std::string_view_literals;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

std::string Repeated(std::string_view text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

int Count(std::string_view part, std::string_view text) {
  int count = 0;
  for (auto at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
  return count;
}

class SettingsExport : public SettingsTest {
 protected:
  std::string Export() { return ExportSettings(ReadSettings(settings)); }
};
INSTANTIATE_TEST_SUITE_P(Registries, SettingsExport, ::testing::ValuesIn(RegistryKinds()), KindName);

TEST_P(SettingsExport, WritesOneLineForEachValue) {
  if (GetParam().name == "Machine") GTEST_SKIP() << "Windows has an order of its own";
  settings.SaveSetting("Settings\\WidthField", "Ticker", 1700);
  settings.SaveSetting("Settings", "Seconds", "60");
  settings.SaveSetting("Settings", "GreyOut", 1);
  settings.SaveSetting("Windows settings\\frmColor", "WindowState", -1);
  EXPECT_EQ(Export(),
            "# Settings of Mirelo. One value a line: section, key, kind, value.\n"
            "Settings\tSeconds\ttext\t60\n"
            "Settings\tGreyOut\tinteger\t1\n"
            "Settings\\WidthField\tTicker\tinteger\t1700\n"
            "Windows settings\\frmColor\tWindowState\tinteger\t-1\n");
}

TEST_P(SettingsExport, OfAnEmptyStoreHasOnlyItsHeading) { EXPECT_THAT(ParseSettings(Export()), IsEmpty()); }

TEST_P(SettingsExport, EscapesWhatPartsFieldsAndLines) {
  settings.SaveSetting("Settings\\WidthField", "a\\b\tc", 5);
  settings.SaveSetting("Settings", "Style", Variant(std::string("x\ty\nz\r\\n\0#", 10)));
  EXPECT_THAT(Export(), HasSubstr("\ta\\\\b\\tc\tinteger\t5\n"));
  EXPECT_THAT(Export(), HasSubstr("\ttext\tx\\ty\\nz\\r\\\\n\\0#\n"));
}

TEST_P(SettingsExport, LeavesOutWhatIsNoSetting) {
  settings.SaveSetting("Settings", "Unknown", 1);
  settings.SaveSetting("Elsewhere", "Seconds", 1);
  Put("Style", Registry::kBinary, "abc");
  EXPECT_THAT(ReadSettings(settings), IsEmpty());
}

TEST_P(SettingsExport, CarriesAllValuesToAnotherStore) {
  if (GetParam().name == "Machine") GTEST_SKIP() << "Windows' registry has no transactions";
  settings.SaveSetting("Settings", "Seconds", 60);  // an integer under a key that usually holds a text
  settings.SaveSetting("Settings\\QuoteSource\\First", "ComQuoteSource",
                       Variant(std::string("\t\\n\r\n\0 \u20AC ", 11)));
  settings.SaveSetting("Settings", "ListLeft", "");
  settings.SaveSetting("Settings", "Sort_Desc", true);
  settings.SaveSetting("Settings\\WidthField", " a header\t", 800);
  settings.SaveSetting("Settings\\QuoteSource\\List", " IQFeed US - STREAMING RealTime (Subscription)",
                       "IQFEED.SDF");
  settings.SaveSetting("Windows settings\\frmMirelo", "NormalPosLeft", -2147483647 - 1);
  const auto before = ReadSettings(settings);
  ASSERT_EQ(before.size(), 7U);
  const std::string text = Export();

  CAppSettings other;
  other.Init("Kestrin", "Another");
  WriteSettings(other, ParseSettings(text));

  const auto after = ReadSettings(other);
  EXPECT_EQ(after, before);
  for (std::size_t i = 0; i < before.size(); ++i) EXPECT_EQ(after.at(i).value.type(), before[i].value.type());
  EXPECT_EQ(ExportSettings(after), text);
}

TEST(SettingsImport, TakesATextAsPeopleAndEditorsLeaveIt) {
  const auto parsed = ParseSettings(
      "\xEF\xBB\xBF# a remark\r\n"
      "\n"
      "settings\tSECONDS\ttext\t60\r\n"
      "\r\n"
      "SETTINGS\\widthfield\tMy column\tinteger\t-5");
  const std::vector<StoredSetting> expected{{"Settings", "Seconds", "60"},
                                            {"Settings\\WidthField", "My column", -5}};
  EXPECT_EQ(parsed, expected);
}

TEST(SettingsImport, RefusesATextThatDoesNotPass) {
  struct Row {
    std::string_view line;
    const char* why;
  };
  const Row rows[] = {
      {"Settings", "four fields"},
      {"Settings\tSeconds\ttext", "four fields"},
      {"Settings\tSeconds\ttext\t60\t", "four fields"},
      {" ", "four fields"},
      {"Settings Seconds text 60", "four fields"},
      {"Settings\tSecondes\ttext\t60", "no setting \"Secondes\""},
      {"Setting\tSeconds\ttext\t60", "no setting \"Setting\\Seconds\""},
      {"Settings\\WidthField\t\tinteger\t5", "no setting"},
      {"Settings\\WidthField\t\\0\tinteger\t5", "no setting"},
      {"Settings\tSeconds\tnumber\t60", "the kind must be"},
      {"Settings\tSeconds\t\t60", "the kind must be"},
      {"Settings\tSeconds\tText\t60", "the kind must be"},
      {"Settings\tSeconds\tinteger\t", "not a 32-bit integer"},
      {"Settings\tSeconds\tinteger\t 60", "not a 32-bit integer"},
      {"Settings\tSeconds\tinteger\t60x", "not a 32-bit integer"},
      {"Settings\tSeconds\tinteger\t2147483648", "not a 32-bit integer"},
      {"Settings\tSeconds\tinteger\t1.5", "not a 32-bit integer"},
      {"Settings\tSeconds\ttext\toften", "a whole number"},
      {"Settings\tGreyOut\tinteger\t2", "from 0 to 1"},
      {"Settings\tWebaddress\ttext\thost:80", "a host name or an address alone"},
      {"Settings\tListRight\ttext\tTicker,Price", "\"Price\" is not allowed here"},
      {"Settings\tStyle\ttext\ta\\", "backslash"},
      {"Settings\tStyle\ttext\ta\\x41", "backslash"},
      {"Settings\tSty\\le\ttext\ta", "backslash"},
      {"Settings\\QuoteSource\\First\tComQuoteSource\ttext\t\xFF", "Windows-1252"},
      {"Settings\\QuoteSource\\First\tComQuoteSource\ttext\t\u0416", "Windows-1252"},
      {"settings\tSTYLE\ttext\tGreen", "twice"},
      {"\0"sv, "four fields"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    const std::string text = "# heading\nSettings\tStyle\ttext\tBlue\n" + std::string(row.line) + "\n";
    const RuntimeError error = ErrorOf([&] { ParseSettings(text); });
    EXPECT_EQ(error.Number(), 5);
    EXPECT_THAT(error.Description(), StartsWith("Line 3: "));
    EXPECT_THAT(error.Description(), HasSubstr(row.why));
  }
}

TEST(SettingsImport, NamesEachLineThatDoesNotPass) {
  const RuntimeError error =
      ErrorOf([] { ParseSettings("Settings\tStyle\ttext\tRed\nSettings\tSeconds\ttext\t5\nnothing\n"); });
  EXPECT_EQ(error.Description(),
            "Line 1: \"Red\" is not allowed here: the value must be Blue, Green, Yellow or None\n"
            "Line 3: four fields parted by tabs are needed");
  EXPECT_EQ(Count("Line", ErrorOf([] { ParseSettings(Repeated("nothing\n", 100)); }).Description()), 20);
}

TEST(SettingsImport, TakesChoicesInTheirOwnSpelling) {
  const auto parsed = ParseSettings("Settings\tListRight\ttext\tticker, last\n");
  const std::vector<StoredSetting> expected{{"Settings", "ListRight", "Ticker,Last"}};
  EXPECT_EQ(parsed, expected);
}

class SettingsImportToStore : public SettingsTest {};
INSTANTIATE_TEST_SUITE_P(Registries, SettingsImportToStore, ::testing::ValuesIn(RegistryKinds()), KindName);

TEST_P(SettingsImportToStore, StoresNothingWhenOneOfItCannotBeStored) {
  if (GetParam().name == "Machine") GTEST_SKIP() << "Windows' registry has no transactions";
  settings.SaveSetting("Settings", "Style", "Blue");
  for (const char* call : {"BeginTransaction", "RegCreateKeyExA", "RegSetValueExA", "CommitTransaction"}) {
    SCOPED_TRACE(call);
    const bool each_value = std::string(call).starts_with("Reg");
    registry.Fail(call, each_value ? 2 : 1);
    const auto error = ErrorOf([&] {
      WriteSettings(settings, {{"Settings", "Style", "Green"}, {"Settings", "Seconds", "5"}});
    });
    ExpectError(error, 0x80044281, "Failed saving the application setting", "Mirelo.CAppSetting");
    EXPECT_EQ(settings.GetSetting("Settings", "Style", ""), Variant("Blue"));
    EXPECT_EQ(settings.GetSetting("Settings", "Seconds", ""), Variant(""));
  }
  WriteSettings(settings, {{"Settings", "Style", "Green"}});
  EXPECT_EQ(settings.GetSetting("Settings", "Style", ""), Variant("Green")) << "the next one is stored";
}

}  // namespace
}  // namespace mirelo::testing
