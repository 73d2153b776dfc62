#include "core/settings_catalogue.h"

#include <cctype>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "dialog/grid_columns.h"
#include "settings/settings_test.h"

namespace mirelo::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

const Setting& The(std::string_view section, std::string_view key) {
  const Setting* setting = FindSetting(section, key);
  if (setting == nullptr) throw std::runtime_error("no setting " + std::string(key));
  return *setting;
}

// What stands between the first two of these characters.
std::string Between(const std::string& text, char mark) {
  const auto begin = text.find(mark) + 1;
  return text.substr(begin, text.find(mark, begin) - begin);
}

TEST(SettingsCatalogue, HasEachSettingOnceWithASentence) {
  std::set<std::pair<std::string, std::string>> names;
  for (const Setting& setting : AllSettings()) {
    SCOPED_TRACE(setting.key);
    EXPECT_TRUE(names.insert({UCase(setting.section), UCase(setting.key)}).second);
    EXPECT_TRUE(std::isupper(static_cast<unsigned char>(setting.meaning.front())));
    EXPECT_TRUE(setting.meaning.ends_with('.'));
    EXPECT_LE(setting.least, setting.greatest);
  }
}

TEST(SettingsCatalogue, FindsSettingsWithoutRegardToCase) {
  EXPECT_EQ(FindSetting("SETTINGS", "seconds"), FindSetting("Settings", "Seconds"));
  EXPECT_EQ(FindSetting("settings\\widthfield", "Any header"), FindSetting("Settings\\WidthField", "Ticker"));
  EXPECT_EQ(FindSetting("WINDOWS SETTINGS\\FRMCOLOR", "windowstate"),
            FindSetting("Windows settings\\frmMirelo", "WindowState"));
}

TEST(SettingsCatalogue, DoesNotFindWhatTheSystemDoesNotHave) {
  const std::pair<std::string, std::string> rows[] = {
      {"Settings", "Secondes"},
      {"Settings", ""},
      {"Setting", "Seconds"},
      {"Settings\\", "Seconds"},
      {"Settings\\QuoteSource", "ComQuoteSource"},
      {"Windows settings\\", "WindowState"},
      {"Windows settings\\frmOther", "WindowState"},
      {"Settings\\WidthField", ""},
      {"Settings\\WidthField", std::string("a\0b", 3)},
      {"Settings\\WidthField", "\u0416"},
      {"Settings\\WidthField", "\xFF"},
      {"Settings\\WidthField", std::string(16384, 'x')},
  };
  for (const auto& [section, key] : rows) {
    SCOPED_TRACE(section + "|" + key.substr(0, 20));
    EXPECT_EQ(FindSetting(section, key), nullptr);
  }
}

TEST(SettingNames, AreReadWithAndWithoutTheirSection) {
  struct Row {
    const char* name;
    const char* section;
    const char* key;
    const char* shortest;
  };
  constexpr Row rows[] = {
      {"Seconds", "Settings", "Seconds", "Seconds"},
      {"Settings\\Seconds", "Settings", "Seconds", "Seconds"},
      {"SETTINGS\\seconds", "Settings", "seconds", "seconds"},
      {"Unknown", "Settings", "Unknown", "Unknown"},
      {"WidthField\\Ticker", "Settings\\WidthField", "Ticker", "WidthField\\Ticker"},
      {"Settings\\WidthField\\Ticker", "Settings\\WidthField", "Ticker", "WidthField\\Ticker"},
      {"WidthField\\A\\B", "Settings\\WidthField", "A\\B", "WidthField\\A\\B"},
      {"quotesource\\first\\ComQuoteSource", "Settings\\QuoteSource\\First", "ComQuoteSource",
       "QuoteSource\\First\\ComQuoteSource"},
      {"Windows settings\\frmMirelo\\WindowState", "Windows settings\\frmMirelo", "WindowState",
       "Windows settings\\frmMirelo\\WindowState"},
      {"", "Settings", "", ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const SettingName name = ParseSettingName(row.name);
    EXPECT_EQ(name.section, row.section);
    EXPECT_EQ(name.key, row.key);
    EXPECT_EQ(ShortSettingName(name.section, name.key), row.shortest);
  }
}

TEST(SettingNames, HaveASpellingOfTheSystem) {
  const SettingName fixed = OwnSpelling({"SETTINGS", "LISTRIGHT"});
  EXPECT_EQ(fixed.section, "Settings");
  EXPECT_EQ(fixed.key, "ListRight");
  const SettingName free = OwnSpelling({"settings\\WIDTHFIELD", "tICKER"});
  EXPECT_EQ(free.section, "Settings\\WidthField");
  EXPECT_EQ(free.key, "tICKER") << "the user's own name";
}

TEST(SettingValues, AreWhatAReaderCanUse) {
  struct Row {
    const char* key;
    const char* text;
    Variant value;
  };
  const Row rows[] = {
      {"Seconds", "3600", "3600"},
      {"Seconds", " 60 ", " 60 "},
      {"Seconds", "&H10", "&H10"},
      {"txtDecimalPlaces", "0", 0},
      {"txtDecimalPlaces", "2.5", 2},
      {"GreyOut", "1", 1},
      {"HTTPPort", "32767", "32767"},
      {"HTTPPort", "-25536", "-25536"},
      {"RowsLimit", "0", "0"},
      {"ChartPoints", "5", "5"},
      {"SocketPort", "65535", "65535"},
      {"FillColorON", "-4142", "-4142"},
      {"Sort_Desc", "true", "True"},
      {"Sort_Desc", "0", "False"},
      {"Style", " yellow ", "Yellow"},
      {"ChartStyle", "NONE", "None"},
      {"ListRight", "ticker, last ,52W LOW", "Ticker,Last,52w Low"},
      {"ListLeft", "", ""},
      {"VerticalField", "bid", "Bid"},
      {"DisplayTimezone", "(ET+9.5) India", "(ET+9.5) India"},
      {"DisplayOffset", "-0:30", "-0:30"},
      {"Webaddress", "quotes.example.org", "quotes.example.org"},
      {"Webaddress", "::1", "::1"},
      {"txtVerticalSheet", "Caf\u00E9 \u20AC", "Caf\u00E9 \u20AC"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.key) + "=" + row.text);
    const Variant value = SettingValue(The("Settings", row.key), row.text);
    EXPECT_EQ(value.type(), row.value.type());
    EXPECT_EQ(value, row.value);
  }
}

TEST(SettingValues, ThatNoReaderCouldUseAreRefusedWithWhatIsAllowed) {
  struct Row {
    const char* key;
    const char* text;
    const char* allowed;
  };
  constexpr Row rows[] = {
      {"Seconds", "often", "a whole number from 0 to 3600"},
      {"Seconds", "", "a whole number"},
      {"Seconds", "-1", "from 0 to 3600"},
      {"Seconds", "60 s", "a whole number"},
      {"txtDecimalPlaces", "-1", "from 0 to 10"},
      {"GreyOut", "2", "from 0 to 1"},
      {"GreyOut", "True", "from 0 to 1"},
      {"HTTPPort", "40000", "a port from 1 to 32767, or one above that less 65536: -25536 for 40000"},
      {"HTTPPort", "0", "a port from 1 to 32767"},
      {"SocketPort", "65536", "from 1 to 65535"},
      {"SocketPort", "0", "from 1 to 65535"},
      {"ChartPoints", "2", "from 5 to 1200"},
      {"RowsLimit", "-1", "from 0 to 3600"},
      {"Sort_Desc", "up", "True or False"},
      {"Style", "Red", "Blue, Green, Yellow or None"},
      {"Style", "", "Blue, Green, Yellow or None"},
      {"ListRight", "foo", "Ticker, Date, Time, Last, Bid"},
      {"ListRight", "Ticker,,Last", "a list, parted by commas, of Ticker"},
      {"ListRight", " ", "a list, parted by commas, of Ticker"},
      {"VerticalField", "Price", "52w Low or 52w High"},
      {"DisplayTimezone", "CET", "(ET-1)Us Central, (ET) US Eastern"},
      {"DisplayOffset", "1:15", "half hours from -23:30 to 23:30"},
      {"FillColorON", "1", "a colour of the dialog's palette"},
      {"Webaddress", "127.0.0.1:8080", "a host name or an address alone; a port goes into HTTPPort"},
      {"Webaddress", "http://quotes", "a host name or an address alone"},
      {"Webaddress", "", "a host name or an address alone"},
      {"txtVerticalSheet", "a/b", "without any of"},
      {"txtVerticalSheet", "A sheet with far too long a name", "at most 28 characters"},
      {"txtVerticalSheet", "\u0416", "without any of"},
      {"txtVerticalSheet", "\xFF", "without any of"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.key) + "=" + row.text);
    const RuntimeError error = ErrorOf([&] { SettingValue(The("Settings", row.key), row.text); });
    EXPECT_EQ(error.Number(), 5);
    EXPECT_THAT(error.Description(), HasSubstr(row.allowed));
    EXPECT_THAT(row.text, HasSubstr(Between(error.Description(), '"')));
    EXPECT_THAT(error.Description(), HasSubstr(AllowedValues(The("Settings", row.key))));
  }
}

// The dialog and scripts show these texts, too.
TEST(SettingValues, AreToldWithoutOptionsOfACommandLine) {
  for (const Setting& setting : AllSettings())
    EXPECT_THAT(AllowedValues(setting), Not(HasSubstr("--"))) << setting.key;
}

// Readers find their defaults in the catalogue, and the tests of each reader say what they are.
TEST(SettingDefaults, AreValuesThatReadersCanUse) {
  for (const Setting& setting : AllSettings()) {
    SCOPED_TRACE(setting.key);
    for (const auto& assumed : {setting.facade_default, setting.dialog_default}) {
      if (!assumed) continue;
      EXPECT_NO_THROW(SettingValue(setting, *assumed)) << *assumed;
    }
  }
}

TEST(SettingDefaults, AreWideForTheTickersAndTheCharts) {
  EXPECT_THAT(catalogue::kWideColumns, ::testing::ElementsAre(kTickerHeader, kChartHeader));
}

TEST(SettingDefaults, AreOfTheSettingsOwnKind) {
  for (const Setting& setting : AllSettings()) {
    SCOPED_TRACE(setting.key);
    const auto value = DefaultValue(setting, setting.key);
    if (!value) continue;
    EXPECT_EQ(value->type(), setting.kind == SettingKind::Text ? Variant::Type::String : Variant::Type::Long);
  }
}

TEST(SettingDefaults, AreTheFacadesWhereItHasOne) {
  struct Row {
    const char* section;
    const char* key;
    std::optional<Variant> value;
  };
  const Row rows[] = {
      {"Settings", "Seconds", "10"},
      {"Settings", "BuildCharts", 1},
      {"Settings", "AddYAxis", 0},
      {"Settings", "Sort_Desc", "False"},
      {"Settings\\WidthField", "ticker", 1700},
      {"Settings\\WidthField", "Charts (Last & Volume)", 1700},
      {"Settings\\WidthField", "Bid", 800},
      {"Settings\\QuoteSource\\First", "ComQuoteSource", "Alpstein Finance (delayed)"},
      {"Settings\\QuoteSource\\List", "OC Securities", std::nullopt},
      {"Windows settings\\frmMirelo", "WindowState", -1},
      {"Windows settings\\frmMirelo", "NormalPosLeft", std::nullopt},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.key);
    EXPECT_EQ(DefaultValue(The(row.section, row.key), row.key), row.value);
  }
}

}  // namespace
}  // namespace mirelo::testing
