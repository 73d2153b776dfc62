// Failures of the settings dialog, and what the person answers in the report above it.

#include <functional>
#include <string>

#include "windows/views/settings_dialog_rig.h"

namespace mirelo::windows {
namespace {

class Reports : public ::testing::Test, protected SettingsDialogOnWindows {
 protected:
  static constexpr std::int32_t kGreen = 32768;

  // Reading this setting fails until it is saved again.
  void Damage(const char* key) {
    const auto section = Section();
    registry.RegSetValueExA(section, key, host::Registry::kSz, "", 0);
    registry.RegCloseKey(section);
  }
  void Save(const char* key, const std::string& value) {
    const auto section = Section();
    registry.RegSetValueExA(section, key, host::Registry::kSz, value.c_str(),
                            static_cast<std::uint32_t>(value.size() + 1));
    registry.RegCloseKey(section);
  }
  static std::string FormOnTop() { return forms::ActiveForm() == nullptr ? "" : forms::ActiveForm()->Name(); }

  // The color of "On" cannot be read.
  void PressesOnAndFails() {
    person.Does("open the settings", [this] { Open(kSettings); });
    person.Does("press On", [this] {
      Damage("FillColorON");
      person.Click("ButOn");
    });
    person.Waits("the report", [] { return FormOnTop() == "frmErrorMessage"; });
  }
  void PicksGreen() {
    person.Waits("the palette", [] { return FormOnTop() == "frmColor"; });
    person.Does("pick green", [this] { person.Click("L1(17)"); });
  }
  void Cancels() {
    person.Does("cancel", [this] { person.Click("ButCancel"); });
    EXPECT_EQ(facade->LoadFrmMirelo(), 2);
  }

 private:
  host::Registry::Key Section() {
    host::Registry::Key section = 0;
    registry.RegCreateKeyExA(host::Registry::kCurrentUser, "Software\\Kestrin\\Dovanta2\\Settings",
                             host::Registry::kAllAccess, section);
    return section;
  }
};

TEST_F(Reports, ThatAreIgnoredHaveTheNextStatementRun) {
  PressesOnAndFails();
  person.Does("read it, and ignore it", [&] {
    EXPECT_NE(person.TextOf("txtErrorMessage").find("Mirelo.frmMirelo."), std::string::npos);
    EXPECT_FALSE(person.IsEnabled("btnSend"));
    person.Click("btnIgnore");
  });
  PicksGreen();
  Cancels();
}

TEST_F(Reports, ThatAreClosedByTheirCloseBoxAreIgnored) {
  PressesOnAndFails();
  person.Does("close it", [&] { ::PostMessageW(person.Window().window(), WM_CLOSE, 0, 0); });
  PicksGreen();
  Cancels();
}

TEST_F(Reports, OfWhatIsMendedAreRetried) {
  PressesOnAndFails();
  person.Does("mend it, and try again", [&] {
    Save("FillColorON", "255");
    person.Click("btnRetry");
  });
  PicksGreen();
  Cancels();
}

TEST_F(Reports, ThatAreAbortedEndTheRoutine) {
  PressesOnAndFails();
  person.Does("abort", [&] { person.Click("btnAbort"); });
  person.Waits("the dialog", [] { return FormOnTop() == "frmMirelo"; });
  Cancels();
}

TEST_F(Reports, AreNotEndedByKeysAlone) {
  PressesOnAndFails();
  person.Does("go into the text", [&] { person.Click("txtErrorMessage"); });
  person.Does("press Escape", [] { Person::Press(VK_ESCAPE); });
  person.Does("press Enter", [] {
    EXPECT_EQ(FormOnTop(), "frmErrorMessage");
    Person::Press(VK_RETURN);
  });
  person.Does("look, and abort", [&] {
    EXPECT_EQ(FormOnTop(), "frmErrorMessage");
    person.Click("btnAbort");
  });
  Cancels();
}

}  // namespace
}  // namespace mirelo::windows
