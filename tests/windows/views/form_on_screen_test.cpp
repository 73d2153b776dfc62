// Where the windows of forms lie on the screen, and how large they are.

#include <memory>
#include <string>
#include <vector>

#include "windows/views/sample_form.h"

namespace mirelo::windows {
namespace {

TEST_F(Controls, SayWhereTheyAreWhileTheyAreShown) {
  person.Does("look", [&] {
    const host::WindowRectangle place = desktop.GetWindowPlacement(form)->normal;
    const host::WindowRectangle screen = desktop.GetDesktopPlacement()->normal;
    EXPECT_GT(place.right, place.left);
    EXPECT_GE(place.left, screen.left);
    EXPECT_LE(place.right, screen.right);
    form.Hide();
  });
  desktop.ShowModal(form);
  EXPECT_FALSE(desktop.GetWindowPlacement(form).has_value());
}

TEST_F(Controls, AreKeptOnTheScreen) {
  person.Does("move it off", [&] {
    host::WindowPlacement far_off;
    far_off.normal = {20'000, -9'000, 20'400, -8'700};
    EXPECT_TRUE(desktop.SetWindowPlacement(form, far_off));
    const host::WindowRectangle place = desktop.GetWindowPlacement(form)->normal;
    const host::WindowRectangle screen = desktop.GetDesktopPlacement()->normal;
    EXPECT_LE(place.right, screen.right);
    EXPECT_GE(place.top, screen.top);
    form.Hide();
  });
  desktop.ShowModal(form);
  EXPECT_FALSE(desktop.SetWindowPlacement(form, {}));
}

TEST_F(Controls, AreMaximizedAndBackByTheirFormAndByWindows) {
  person.Does("look", [&] {
    const HWND window = person.Window().window();
    form.WindowState(forms::Form::State::Maximized);
    EXPECT_NE(::IsZoomed(window), 0);
    EXPECT_EQ(desktop.GetWindowPlacement(form)->state, host::WindowPlacement::kMaximized);
    ::ShowWindow(window, SW_RESTORE);
    EXPECT_EQ(form.WindowState(), forms::Form::State::Normal);
    host::WindowPlacement placement = *desktop.GetWindowPlacement(form);
    placement.state = host::WindowPlacement::kMaximized;
    desktop.SetWindowPlacement(form, placement);
    EXPECT_EQ(form.WindowState(), forms::Form::State::Maximized);
    form.Hide();
  });
  desktop.ShowModal(form);
}

// A form that is put somewhere while it is loaded, as one that remembers its place.
class PlacedForm : public Sample {
 public:
  explicit PlacedForm(host::Desktop& desktop) : desktop_(desktop) {}
  void Form_Load() override {
    auto placement = *desktop_.GetWindowPlacement(*this);
    placement.normal = {100, 50, 700, 600};
    EXPECT_TRUE(desktop_.SetWindowPlacement(*this, placement));
    EXPECT_FALSE(Visible());
  }

 private:
  host::Desktop& desktop_;
};

TEST_F(Controls, ComeUpWhereTheyWerePutBefore) {
  PlacedForm placed(desktop);
  person.Does("look", [&] {
    EXPECT_EQ(desktop.GetWindowPlacement(placed)->normal, (host::WindowRectangle{100, 50, 700, 600}));
    placed.Hide();
  });
  desktop.ShowModal(placed);
}

TEST_F(Controls, GrowWithTheDotsOfTheScreen) {
  person.Does("move to a finer screen", [&] {
    const RECT before = person.PlaceOf("press");
    RECT place{};
    ::GetWindowRect(person.Window().window(), &place);
    ::SendMessageW(person.Window().window(), WM_DPICHANGED, MAKEWPARAM(192, 192),
                   reinterpret_cast<LPARAM>(&place));
    const RECT after = person.PlaceOf("press");
    EXPECT_NEAR(after.bottom - after.top, 2 * (before.bottom - before.top), 4);
    form.Hide();
  });
  desktop.ShowModal(form);
}

// Higher than any screen.
class HighForm : public forms::Form {
 public:
  HighForm() : Form("High", "High") {
    for (int number = 0; number < 150; ++number) {
      fields.push_back(std::make_unique<forms::TextBox>(*this, "field" + std::to_string(number), nullptr));
    }
  }
  std::vector<std::unique_ptr<forms::TextBox>> fields;
};

TEST_F(Controls, ScrollWhereTheScreenIsTooLow) {
  HighForm high;
  const auto is_seen = [&](const std::string& field) {
    RECT room{};
    ::GetClientRect(person.Window().window(), &room);
    ::MapWindowPoints(person.Window().window(), nullptr, reinterpret_cast<POINT*>(&room), 2);
    const RECT place = person.PlaceOf(field);
    return place.top >= room.top && place.bottom <= room.bottom;
  };
  person.Does("look, and scroll", [&] {
    const host::WindowRectangle place = desktop.GetWindowPlacement(high)->normal;
    EXPECT_LE(place.bottom, desktop.GetDesktopPlacement()->normal.bottom);
    EXPECT_TRUE(is_seen("field0"));
    EXPECT_FALSE(is_seen("field149"));
    ::SendMessageW(person.Window().window(), WM_VSCROLL, SB_BOTTOM, 0);
    EXPECT_TRUE(is_seen("field149"));
    ::SetFocus(person.Find("field1"));
    EXPECT_TRUE(is_seen("field1")) << "which has the focus";
    ::SetFocus(person.Find("field149"));
    EXPECT_TRUE(is_seen("field149"));
    ::SendMessageW(person.Window().window(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    EXPECT_FALSE(is_seen("field149"));
    high.Hide();
  });
  desktop.ShowModal(high);
}

}  // namespace
}  // namespace mirelo::windows
