// Where windows are, and where they are put.

#include <QScreen>

#include "adapters/qt/form_window.h"
#include "adapters/qt/twips.h"
#include "forms/text_box.h"
#include "qt/gui_test.h"

namespace mirelo::qt {
namespace {

using forms::Form;
using host::WindowPlacement;
using host::WindowRectangle;

class Placed : public Form {
 public:
  explicit Placed(Border border = Border::Sizable) : Form("Placed", "Placed") { Design(3000, 3000, border); }
  void Form_Load() override { on_load(); }

  forms::TextBox text{*this, "text", nullptr};
  std::function<void()> on_load = [] {};
};

class Placement : public GuiTest {
 protected:
  static QRect Geometry() { return {TopWindow()->pos(), TopWindow()->size()}; }
  static QRect Screen() { return QGuiApplication::primaryScreen()->availableGeometry(); }
  static WindowPlacement At(WindowRectangle place, std::int32_t state = WindowPlacement::kNormal) {
    WindowPlacement placement;
    placement.state = state;
    placement.normal = place;
    return placement;
  }
};

TEST_F(Placement, OfTheScreenIsAllOfIt) {
  const auto placement = desktop.GetDesktopPlacement();
  ASSERT_TRUE(placement);
  const QRect screen = QGuiApplication::primaryScreen()->geometry();
  EXPECT_EQ(placement->state, WindowPlacement::kNormal);
  EXPECT_EQ(placement->normal, (WindowRectangle{0, 0, screen.width(), screen.height()}));
}

TEST_F(Placement, IsTheMiddleOfTheScreenUnlessToldOtherwise) {
  Placed form;
  person.Does("look", [&] {
    EXPECT_NEAR(Geometry().center().x(), Screen().center().x(), 1);
    EXPECT_NEAR(Geometry().center().y(), Screen().center().y(), 1);
    EXPECT_EQ(TopWindow()->width(), PixelsOf(3000, *TopWindow()));
  });
  Show(form);
}

TEST_F(Placement, SetWhileTheFormIsLoadedIsWhereItComesUp) {
  Placed form;
  bool taken = false;
  form.on_load = [&] { taken = desktop.SetWindowPlacement(form, At({100, 120, 500, 420})); };
  person.Does("look", [&] { EXPECT_EQ(Geometry(), QRect(100, 120, 400, 300)); });
  Show(form);
  EXPECT_TRUE(taken);
}

TEST_F(Placement, ComesBackAsItWasSet) {
  Placed form;
  std::optional<WindowPlacement> before;
  form.on_load = [&] {
    desktop.SetWindowPlacement(form, At({100, 120, 500, 420}));
    before = desktop.GetWindowPlacement(form);
  };
  person.Does("look", [&] { EXPECT_EQ(desktop.GetWindowPlacement(form), before); });
  Show(form);
  EXPECT_EQ(before, At({100, 120, 500, 420}));
  EXPECT_EQ(desktop.GetWindowPlacement(form), std::nullopt) << "it is no longer shown";
}

TEST_F(Placement, FollowsThePersonWhoMovesTheWindow) {
  Placed form;
  person.Does("move and resize", [&] {
    TopWindow()->move(60, 70);
    TopWindow()->resize(350, 340);
    EXPECT_EQ(desktop.GetWindowPlacement(form), At({60, 70, 410, 410}));
  });
  Show(form);
}

TEST_F(Placement, OffEveryScreenIsBroughtOntoOne) {
  struct Case {
    const char* name;
    WindowRectangle place;
  };
  const Case cases[] = {
      {"to the left", {-5000, 100, -4700, 400}}, {"to the right", {9000, 100, 9300, 400}},
      {"above", {100, -3000, 400, -2700}},       {"below", {100, 9000, 400, 9300}},
      {"half out", {-150, -150, 150, 150}},      {"larger than the screen", {0, 0, 90000, 90000}},
      {"inside out", {300, 300, 100, 100}},      {"nowhere", {0, 0, 0, 0}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Placed form;
    form.on_load = [&] { desktop.SetWindowPlacement(form, At(c.place)); };
    person.Does("look", [&] {
      EXPECT_TRUE(Screen().contains(Geometry()));
      EXPECT_GE(TopWindow()->width(), TopWindow()->minimumSizeHint().width());
    });
    Show(form);
  }
}

TEST_F(Placement, MayBeMaximisedOrMinimisedAndKeepsTheNormalPlace) {
  struct Case {
    std::int32_t state;
    Form::State shown;
    std::int32_t saved;
  };
  const Case cases[] = {
      {1, Form::State::Normal, 1},    {2, Form::State::Minimized, 2}, {3, Form::State::Maximized, 3},
      {4, Form::State::Normal, 1},    {5, Form::State::Normal, 1},    {6, Form::State::Minimized, 2},
      {7, Form::State::Minimized, 2}, {9, Form::State::Normal, 1},    {0, Form::State::Normal, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.state);
    Placed form;
    form.on_load = [&] { desktop.SetWindowPlacement(form, At({100, 120, 500, 420}, c.state)); };
    person.Waits("the form", [&] { return form.Visible(); });
    person.Does("look", [&] {
      EXPECT_EQ(form.WindowState(), c.shown);
      EXPECT_EQ(TopWindow()->isMaximized(), c.shown == Form::State::Maximized);
      EXPECT_EQ(TopWindow()->isMinimized(), c.shown == Form::State::Minimized);
      EXPECT_EQ(desktop.GetWindowPlacement(form), At({100, 120, 500, 420}, c.saved));
      form.Hide();
    });
    desktop.ShowModal(form);
  }
}

TEST_F(Placement, StateThatTheFormGivesItselfIsSeenAndThatOfThePersonIsKnown) {
  Placed form;
  form.on_load = [&] { form.WindowState(Form::State::Maximized); };
  person.Does("look and restore", [&] {
    EXPECT_TRUE(TopWindow()->isMaximized());
    TopWindow()->showNormal();
  });
  person.Does("look", [&] { EXPECT_EQ(form.WindowState(), Form::State::Normal); });
  Show(form);
}

TEST_F(Placement, OfAFixedFormKeepsItsSize) {
  Placed form(Form::Border::FixedDialog);
  QSize own;
  form.on_load = [&] {
    own = desktop.WindowOf(form)->size();
    desktop.SetWindowPlacement(form, At({100, 120, 900, 820}));
  };
  person.Does("look", [&] { EXPECT_EQ(Geometry(), QRect(QPoint(100, 120), own)); });
  Show(form);
}

TEST_F(Placement, OfAFormThatIsNotShownIsUnknown) {
  Placed form;
  EXPECT_EQ(desktop.GetWindowPlacement(form), std::nullopt);
  EXPECT_FALSE(desktop.SetWindowPlacement(form, At({100, 120, 500, 420})));
}

}  // namespace
}  // namespace mirelo::qt
