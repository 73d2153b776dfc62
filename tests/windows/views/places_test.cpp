// Windows that come up where they were, as kept in the machine's registry between them.

#include "windows/views/rig.h"

#include <algorithm>
#include <memory>
#include <string>

#include "core/CAppSettings.h"
#include "diagnostics/CFormRestore.h"
#include "forms/button.h"
#include "registry/tested_registries.h"

namespace mirelo::windows {
namespace {

using forms::Form;
using host::WindowRectangle;

std::unique_ptr<testing::TestedRegistry> RegistryOfTheMachine() {
  const auto& kinds = testing::RegistryKinds();
  return std::ranges::find(kinds, "Machine", &testing::RegistryKind::name)->make();
}

class KeptForm : public Form {
 public:
  explicit KeptForm(CFormRestore& restore, Border border = Border::Sizable)
      : Form("frmKept", "Kept"), restore_(restore) {
    Design(400 * host::kTwipsPerPixel, 300 * host::kTwipsPerPixel, border);
  }
  void Form_Load() override { restore_.GetPosition(*this); }

  forms::Button button{*this, "button", nullptr, "Button"};

 private:
  CFormRestore& restore_;
};

class Places : public OnTheDesktop {
 protected:
  Places() {
    host.Use(registry_->registry());
    settings.Init("Kestrin", "Dovanta2");
    restore.Init(&settings, false);
  }
  std::string Stored(const char* key) { return settings.GetSetting(kSection, key, "none").ToText(); }
  void Store(const char* key, std::int32_t value) { settings.SaveSetting(kSection, key, value); }
  void StorePlace(std::int32_t state, const WindowRectangle& normal) {
    for (const char* const key : {"MinPosX", "MinPosY", "MaxPosX", "MaxPosY"}) Store(key, -1);
    Store("WindowState", state);
    Store("NormalPosLeft", normal.left);
    Store("NormalPosTop", normal.top);
    Store("NormalPosRight", normal.right);
    Store("NormalPosBottom", normal.bottom);
  }
  // Shows it to a person who looks.
  void Show(Form& form, const std::function<void()>& look) {
    person.Does("look", [&] {
      look();
      form.Hide();
    });
    desktop.ShowModal(form);
  }
  WindowRectangle PlaceOf(Form& form) { return desktop.GetWindowPlacement(form)->normal; }

  static constexpr const char* kSection = "Windows settings\\frmKept";
  static constexpr WindowRectangle kPlace{120, 80, 720, 560};

  CAppSettings settings;
  CFormRestore restore;

 private:
  std::unique_ptr<testing::TestedRegistry> registry_ = RegistryOfTheMachine();
};

TEST_F(Places, AreThoseWhereTheFormBeforeWasLeft) {
  KeptForm before(restore);
  Show(before, [&] {
    ::SetWindowPos(person.Window().window(), nullptr, kPlace.left, kPlace.top, kPlace.right - kPlace.left,
                   kPlace.bottom - kPlace.top, SWP_NOZORDER);
    restore.SavePosition(before);
  });
  EXPECT_EQ(Stored("WindowState"), "1");
  EXPECT_EQ(Stored("NormalPosLeft"), "120");
  EXPECT_EQ(Stored("NormalPosBottom"), "560");
  KeptForm later(restore);
  Show(later, [&] { EXPECT_EQ(PlaceOf(later), kPlace); });
}

TEST_F(Places, OfAFormOfFixedSizeAreACornerAlone) {
  StorePlace(host::WindowPlacement::kNormal, {30, 40, 930, 840});
  KeptForm fixed(restore, Form::Border::FixedDialog);
  Show(fixed, [&] {
    RECT window{};
    ::GetWindowRect(person.Window().window(), &window);
    EXPECT_EQ(window.left, 30);
    EXPECT_EQ(window.top, 40);
    EXPECT_LT(window.right - window.left, 500) << "its own width, with a frame";
    EXPECT_LT(window.bottom - window.top, 400);
  });
}

TEST_F(Places, AreMinimizedOrMaximizedOnesAsTheyWere) {
  for (const std::int32_t state : {2, 6, 7}) {
    SCOPED_TRACE(state);
    StorePlace(state, kPlace);
    KeptForm form(restore);
    Show(form, [&] { EXPECT_NE(::IsIconic(person.Window().window()), 0); });
  }
  StorePlace(3, kPlace);
  KeptForm form(restore);
  Show(form, [&] { EXPECT_NE(::IsZoomed(person.Window().window()), 0); });
}

TEST_F(Places, AreNormalOnesWhereNoneMayBeginMinimized) {
  restore.NeverStartMinimized(true);
  for (const std::int32_t state : {2, 6, 7}) {
    SCOPED_TRACE(state);
    StorePlace(state, kPlace);
    KeptForm form(restore);
    Show(form, [&] {
      EXPECT_EQ(::IsIconic(person.Window().window()), 0);
      EXPECT_EQ(PlaceOf(form), kPlace);
    });
  }
}

}  // namespace
}  // namespace mirelo::windows
