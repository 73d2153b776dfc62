#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <string>

#include "automation/variant.h"
#include "core/cMirelo.h"
#include "core/settings_catalogue.h"
#include "support/facade_test.h"

namespace mirelo::testing {
namespace {

// One of the facade's properties as text, so that a table can hold them all.
struct Property {
  const char* name;
  const char* key;
  std::function<std::string(const cMirelo&)> get;
  const char* absent;   // when nothing is stored
  const char* failure;  // when reading fails
  Variant stored;       // an ordinary value
  const char* read;     // what that reads as
  Variant unreadable;   // a value without conversion; empty where all have one
};

std::string Text(std::int32_t number) { return std::to_string(number); }

const Property kProperties[] = {
    {"FillColorFildOff", "FillColorOFF", [](auto& f) { return Text(f.FillColorFildOff()); }, "3", "3",
     "16711680", "5", "red"},
    {"FillColorFildOn", "FillColorON", [](auto& f) { return Text(f.FillColorFildOn()); }, "10", "10", 65280,
     "4", "green"},
    {"TableStyle", "Style", [](auto& f) { return f.TableStyle(); }, "Blue", "Blue", "Green", "Green", {}},
    {"UserVerticalSheet",
     "txtVerticalSheet",
     [](auto& f) { return f.UserVerticalSheet(); },
     "Quotes_Vertical",
     "Quotes_Vertical",
     "  My Sheet ",
     "My Sheet",
     {}},
    {"DecimalPlacesFormat", "txtDecimalPlaces", [](auto& f) { return f.DecimalPlacesFormat(); }, "0.00",
     "0.00", 3, "0.000", "three"},
    {"GreyOut", "GreyOut", [](auto& f) { return Text(f.GreyOut()); }, "1", "1", 0, "0", "grey"},
    {"ColorPoints", "ColorPoints", [](auto& f) { return Text(f.ColorPoints()); }, "1", "1", "0", "0",
     "40000"},
    {"ChartStyle", "ChartStyle", [](auto& f) { return f.ChartStyle(); }, "Blue", "Blue", "Grey", "Grey", {}},
    {"ChartPoints", "ChartPoints", [](auto& f) { return Text(f.ChartPoints()); }, "20", "20", 70000, "70000",
     "many"},
    {"BuildCharts", "BuildCharts", [](auto& f) { return Text(f.BuildCharts()); }, "1", "1", 0, "0", 40000},
    {"RowsLimit", "RowsLimit", [](auto& f) { return Text(f.RowsLimit()); }, "20", "20", "100", "100", "none"},
    {"VerticalTable", "VerticalTable", [](auto& f) { return Text(f.VerticalTable()); }, "1", "1", 0, "0", ""},
    {"Seconds", "Seconds", [](auto& f) { return Text(f.Seconds()); }, "10", "10", 60, "60", "often"},
};

class SettingProperty : public FacadeTest {};

TEST_F(SettingProperty, HasADefaultWhenNothingIsStored) {
  for (const Property& property : kProperties) {
    SCOPED_TRACE(property.name);
    EXPECT_EQ(property.get(*facade), property.absent);
  }
}

// What "settings delete" writes, so that it undoes what was stored.
TEST_F(SettingProperty, ReadsTheCataloguesDefaultAsItReadsNothing) {
  for (const Property& property : kProperties) {
    SCOPED_TRACE(property.name);
    const Setting* setting = FindSetting("Settings", property.key);
    ASSERT_NE(setting, nullptr);
    ASSERT_TRUE(setting->facade_default);
    Save(property.key, Variant(*setting->facade_default));
    EXPECT_EQ(property.get(*facade), property.absent);
  }
}

TEST_F(SettingProperty, ReadsWhatIsStored) {
  for (const Property& property : kProperties) {
    SCOPED_TRACE(property.name);
    Save(property.key, property.stored);
    EXPECT_EQ(property.get(*facade), property.read);
  }
}

TEST_F(SettingProperty, HasItsFallbackForAValueWithoutConversionAndReportsNothing) {
  for (const Property& property : kProperties) {
    if (property.unreadable.IsEmpty()) continue;
    SCOPED_TRACE(property.name);
    Save(property.key, property.unreadable);
    EXPECT_EQ(property.get(*facade), property.failure);
  }
  EXPECT_TRUE(desktop.reports.empty());
}

TEST_F(SettingProperty, HasItsFallbackWhenTheRegistryFails) {
  for (const Property& property : kProperties) {
    SCOPED_TRACE(property.name);
    Save(property.key, property.stored);
    registry.Raise("RegQueryValueExA");
    EXPECT_EQ(property.get(*facade), property.failure);
    EXPECT_EQ(property.get(*facade), property.read);
  }
  EXPECT_TRUE(desktop.reports.empty());
}

// A text of no bytes has not even the terminator that reading drops.
TEST_F(SettingProperty, HasItsFallbackForATextOfNoBytes) {
  const auto path = "Software\\Kestrin\\Dovanta2\\Settings";
  for (const Property& property : kProperties) {
    SCOPED_TRACE(property.name);
    host::Registry::Key key = 0;
    stored.RegCreateKeyExA(host::Registry::kCurrentUser, path, host::Registry::kAllAccess, key);
    stored.RegSetValueExA(key, property.key, host::Registry::kSz, "", 0);
    stored.RegCloseKey(key);
    EXPECT_EQ(property.get(*facade), property.failure);
  }
}

TEST_F(SettingProperty, HasItsDefaultForABinaryValue) {
  const auto path = "Software\\Kestrin\\Dovanta2\\Settings";
  for (const Property& property : kProperties) {
    SCOPED_TRACE(property.name);
    host::Registry::Key key = 0;
    stored.RegCreateKeyExA(host::Registry::kCurrentUser, path, host::Registry::kAllAccess, key);
    stored.RegSetValueExA(key, property.key, host::Registry::kBinary, "\1\2\3\4", 4);
    stored.RegCloseKey(key);
    EXPECT_EQ(property.get(*facade), property.absent);
  }
}

// Each integer property with values that its type just holds, and just does not.
TEST_F(SettingProperty, HasItsFallbackForANumberThatItsTypeDoesNotHold) {
  constexpr const char* k16Bit[] = {"GreyOut", "ColorPoints", "BuildCharts", "VerticalTable"};
  constexpr const char* k32Bit[] = {"ChartPoints", "RowsLimit"};
  const auto check = [&](const char* name, const char* stored_text, const char* read) {
    const auto property =
        std::find_if(std::begin(kProperties), std::end(kProperties),
                     [&](const Property& candidate) { return std::string(candidate.name) == name; });
    ASSERT_NE(property, std::end(kProperties));
    SCOPED_TRACE(std::string(name) + " " + stored_text);
    Save(property->key, stored_text);
    EXPECT_EQ(property->get(*facade), read == nullptr ? property->failure : read);
  };
  for (const char* name : k16Bit) {
    check(name, "32767", "32767");
    check(name, "-32768", "-32768");
    check(name, "32768", nullptr);
    check(name, "-32769", nullptr);
  }
  for (const char* name : k32Bit) {
    check(name, "2147483647", "2147483647");
    check(name, "-2147483648", "-2147483648");
    check(name, "2147483648", nullptr);
    check(name, "-2147483649", nullptr);
  }
}

TEST_F(SettingProperty, HasItsFallbackWhenAnotherFacadeTookTheStoreAlong) {
  { const cMirelo second; }
  for (const Property& property : kProperties) {
    SCOPED_TRACE(property.name);
    EXPECT_EQ(property.get(*facade), property.failure);
  }
}

struct Reading {
  Variant stored;
  const char* read;
};

class OneProperty : public SettingProperty {
 protected:
  void Check(const char* key, const std::function<std::string()>& get,
             std::initializer_list<Reading> readings) {
    for (const Reading& reading : readings) {
      SCOPED_TRACE(reading.stored.ToText());
      Save(key, reading.stored);
      EXPECT_EQ(get(), reading.read);
    }
  }
};

TEST_F(OneProperty, SecondsLieBetweenZeroAndAnHour) {
  Check("Seconds", [&] { return Text(facade->Seconds()); },
        {{70000, "3600"},
         {-70000, "0"},
         {"2147483648", "10"},
         {5000, "3600"},
         {3601, "3600"},
         {3600, "3600"},
         {-7, "0"},
         {-1, "0"},
         {0, "0"},
         {"25", "25"},
         {"soon", "10"}});
}

TEST_F(OneProperty, DecimalPlacesFormatHasAZeroForEachPlace) {
  Check("txtDecimalPlaces", [&] { return facade->DecimalPlacesFormat(); },
        {{0, "0"}, {1, "0.0"}, {3, "0.000"}, {"4", "0.0000"}, {-1, "0.00"}, {70000, "0.00"}});
}

TEST_F(OneProperty, UserVerticalSheetIsTrimmedOfBlanksOnly) {
  Check("txtVerticalSheet", [&] { return facade->UserVerticalSheet(); },
        {{" a b ", "a b"}, {" \tname\t ", "\tname\t"}, {"   ", ""}, {7, "7"}});
}

TEST_F(OneProperty, FillColorsAreIndexesOfThePalette) {
  Check("FillColorON", [&] { return Text(facade->FillColorFildOn()); },
        {{"0", "1"}, {"255", "3"}, {1, "-4142"}, {-4142, "-4142"}});
}

TEST_F(OneProperty, AnIntegerIsATextWhereATextIsWanted) {
  Check("Style", [&] { return facade->TableStyle(); }, {{5, "5"}, {"", ""}});
}

}  // namespace
}  // namespace mirelo::testing
