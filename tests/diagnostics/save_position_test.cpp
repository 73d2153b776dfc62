#include <gmock/gmock.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "automation/array.h"
#include "automation/runtime_error.h"
#include "diagnostics/placement_fixture.h"
#include "support/error_number.h"

namespace mirelo::testing {
namespace {

using host::WindowPlacement;
using ::testing::IsEmpty;

constexpr WindowPlacement kPlace{3, -1, -2, 30, 40, {-50, 60, 700, 800}};

class SavePosition : public PlacementTest {
 protected:
  SavePosition() { desktop.placements["frmPlaced"] = kPlace; }

  std::vector<std::string> KeysOf(const char* section) {
    Array<std::string> keys;
    settings.GetAllKeys(section, keys);
    if (!keys.IsAllocated()) return {};
    std::vector<std::string> names;
    for (std::int32_t i = keys.LBound(); i <= keys.UBound(); ++i) names.push_back(keys(i));
    return names;
  }
};

TEST_F(SavePosition, StoresNineNumbersInTheFormsSection) {
  restore.SavePosition(form);
  const std::pair<const char*, std::int32_t> values[] = {
      {"WindowState", 3},   {"MinPosX", -1},         {"MinPosY", -2},
      {"MaxPosX", 30},      {"MaxPosY", 40},         {"NormalPosLeft", -50},
      {"NormalPosTop", 60}, {"NormalPosRight", 700}, {"NormalPosBottom", 800}};
  for (const auto& [key, value] : values) {
    SCOPED_TRACE(key);
    const Variant stored = settings.GetSetting(kSection, key, "absent");
    EXPECT_EQ(stored.TypeName(), "Long");
    EXPECT_EQ(stored, Variant(value));
  }
  EXPECT_EQ(KeysOf(kSection).size(), std::size(values));
}

// Each value that fails to be stored leaves those before it and none behind it.
TEST_F(SavePosition, StoresStateThenCornersThenTheNormalRectangle) {
  const std::vector<std::string> order = {"WindowState",  "MinPosX",        "MinPosY",
                                          "MaxPosX",      "MaxPosY",        "NormalPosLeft",
                                          "NormalPosTop", "NormalPosRight", "NormalPosBottom"};
  for (std::size_t stored = 0; stored < order.size(); ++stored) {
    SCOPED_TRACE(order[stored]);
    const std::string key_name = "Places" + std::to_string(stored);
    restore.KeyName(key_name);
    registry.Fail("RegSetValueExA", static_cast<int>(stored) + 1);
    ExpectError(ErrorOf([&] { restore.SavePosition(form); }), 0x80044281,
                "Failed saving the application setting", "Mirelo.CAppSetting");
    EXPECT_THAT(KeysOf((key_name + "\\frmPlaced").c_str()),
                ::testing::UnorderedElementsAreArray(order.data(), stored));
  }
}

TEST_F(SavePosition, OverwritesWhatWasSavedBefore) {
  restore.SavePosition(form);
  desktop.placements["frmPlaced"].normal.left = 99;
  restore.SavePosition(form);
  EXPECT_EQ(settings.GetSetting(kSection, "NormalPosLeft", 0), Variant(99));
}

TEST_F(SavePosition, StoresNothingWhenTheDesktopDoesNotKnowThePlace) {
  desktop.placements.clear();
  restore.SavePosition(form);
  EXPECT_THAT(KeysOf(kSection), IsEmpty());
  EXPECT_EQ(registry.Calls("RegCreateKeyExA"), 0);
}

TEST_F(SavePosition, WithoutAStoreIsNotInitialized) {
  CFormRestore bare;
  ExpectError(ErrorOf([&] { bare.SavePosition(form); }), 0x80044499, "Object not properly initialized",
              "Mirelo.CFormRestore");
}

class FormRestoreProperties : public PlacementTest {};

TEST_F(FormRestoreProperties, StartWithoutStoreUncenteredAndUnderWindowsSettings) {
  const CFormRestore fresh;
  EXPECT_EQ(fresh.AppSettings(), nullptr);
  EXPECT_FALSE(fresh.CenteredByDefault());
  EXPECT_FALSE(fresh.NeverStartMinimized());
  EXPECT_EQ(fresh.KeyName(), "Windows settings");
}

TEST_F(FormRestoreProperties, AreSetByInitAndOneByOne) {
  CFormRestore fresh;
  fresh.Init(&settings, true);
  EXPECT_EQ(fresh.AppSettings(), &settings);
  EXPECT_TRUE(fresh.CenteredByDefault());
  CAppSettings other;
  fresh.AppSettings(&other);
  fresh.CenteredByDefault(false);
  fresh.NeverStartMinimized(true);
  fresh.KeyName("Places");
  EXPECT_EQ(fresh.AppSettings(), &other);
  EXPECT_FALSE(fresh.CenteredByDefault());
  EXPECT_TRUE(fresh.NeverStartMinimized());
  EXPECT_EQ(fresh.KeyName(), "Places");
}

TEST_F(FormRestoreProperties, RefuseToInitWithoutAStoreAndKeepWhatTheyHad) {
  ExpectError(ErrorOf([&] { restore.Init(nullptr, true); }), 0x8004449A, "Invalid AppSettings object",
              "Mirelo.CFormRestore");
  EXPECT_EQ(restore.AppSettings(), &settings);
  EXPECT_FALSE(restore.CenteredByDefault());
}

TEST_F(FormRestoreProperties, RefuseAnEmptyKeyNameAndKeepTheOldOne) {
  ExpectError(ErrorOf([&] { restore.KeyName(""); }), 0x8004449B, "Invalid KeyName value",
              "Mirelo.CFormRestore");
  EXPECT_EQ(restore.KeyName(), "Windows settings");
}

}  // namespace
}  // namespace mirelo::testing
