#include <cstdint>
#include <limits>
#include <string>

#include "automation/runtime_error.h"
#include "diagnostics/placement_fixture.h"
#include "support/error_number.h"

namespace mirelo::testing {
namespace {

using forms::Form;
using host::WindowPlacement;

constexpr WindowPlacement kSaved{1, 11, 12, 13, 14, {30, 40, 630, 440}};

class RestorePosition : public PlacementTest {
 protected:
  void SaveState(std::int32_t state) {
    WindowPlacement place = kSaved;
    place.state = state;
    SavePlace(place);
  }
  std::int32_t RestoredState() {
    restore.GetPosition(form);
    return Place().value_or(WindowPlacement{-1, 0, 0, 0, 0, {}}).state;
  }
};

TEST_F(RestorePosition, PutsAFormWhereItWasSaved) {
  SavePlace(kSaved);
  restore.GetPosition(form);
  EXPECT_EQ(Place(), kSaved);
}

TEST_F(RestorePosition, LeavesAFormAloneThatWasNeverSaved) {
  restore.GetPosition(form);
  EXPECT_EQ(Place(), std::nullopt);

  constexpr WindowPlacement kOfTheDesktop{1, -1, -1, -1, -1, {5, 6, 7, 8}};
  desktop.placements["frmPlaced"] = kOfTheDesktop;
  restore.GetPosition(form);
  EXPECT_EQ(Place(), kOfTheDesktop);
}

TEST_F(RestorePosition, TakesAStateBelowZeroForNothingSaved) {
  SaveState(-1);
  restore.GetPosition(form);
  EXPECT_EQ(Place(), std::nullopt);
}

TEST_F(RestorePosition, OpensAHiddenFormInTheSavedState) {
  constexpr auto kNormal = Form::State::Normal;
  constexpr auto kMinimized = Form::State::Minimized;
  constexpr auto kMaximized = Form::State::Maximized;
  constexpr struct {
    std::int32_t saved;
    Form::State opens;
    std::int32_t state;
  } kRows[] = {{0, kNormal, 0},    {1, kNormal, 1}, {2, kMinimized, 2},  {3, kMaximized, 3},
               {4, kNormal, 4},    {5, kNormal, 5}, {6, kMinimized, 6},  {7, kMinimized, 7},
               {8, kMaximized, 0}, {9, kNormal, 9}, {10, kMaximized, 0}, {11, kNormal, 11}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.saved);
    SaveState(row.saved);
    // Unlike what any state but 3 makes of it, so that a form left alone is told apart.
    form.WindowState(row.saved == 3 ? kNormal : kMaximized);
    EXPECT_EQ(RestoredState(), row.state);
    EXPECT_EQ(form.WindowState(), row.opens);
    EXPECT_FALSE(form.Visible());
  }
}

TEST_F(RestorePosition, OpensAHiddenFormAtItsNormalSizeWhenItMustNotStartMinimized) {
  restore.NeverStartMinimized(true);
  for (const std::int32_t saved : {2, 6, 7}) {
    SCOPED_TRACE(saved);
    SaveState(saved);
    form.WindowState(Form::State::Minimized);
    EXPECT_EQ(RestoredState(), WindowPlacement::kNormal);
    EXPECT_EQ(form.WindowState(), Form::State::Normal);
  }
}

TEST_F(RestorePosition, KeepsTheOtherStatesOfAHiddenFormThatMustNotStartMinimized) {
  restore.NeverStartMinimized(true);
  SaveState(3);
  EXPECT_EQ(RestoredState(), 3);
  EXPECT_EQ(form.WindowState(), Form::State::Maximized);
  SaveState(8);
  EXPECT_EQ(RestoredState(), 0);
  EXPECT_EQ(form.WindowState(), Form::State::Maximized);
}

TEST_F(RestorePosition, HandsTheSavedStateOfAVisibleFormToTheDesktop) {
  form.Show();
  for (std::int32_t saved = 0; saved <= 11; ++saved) {
    SCOPED_TRACE(saved);
    SaveState(saved);
    form.WindowState(Form::State::Maximized);
    EXPECT_EQ(RestoredState(), saved);
    EXPECT_EQ(form.WindowState(), Form::State::Maximized) << "the desktop's to set";
  }
}

TEST_F(RestorePosition, ShowsAVisibleFormAtItsNormalSizeWhenItMustNotStartMinimized) {
  restore.NeverStartMinimized(true);
  form.Show();
  for (std::int32_t saved = 0; saved <= 11; ++saved) {
    SCOPED_TRACE(saved);
    SaveState(saved);
    EXPECT_EQ(RestoredState(), saved == 2 || saved == 6 || saved == 7 ? 1 : saved);
  }
}

TEST_F(RestorePosition, GivesAFormOfFixedSizeItsOwnSizeAtTheSavedCorner) {
  SavePlace(kSaved);
  for (const auto border :
       {Form::Border::FixedSingle, Form::Border::FixedDialog, Form::Border::FixedToolWindow}) {
    SCOPED_TRACE(static_cast<int>(border));
    PlacedForm fixed(border);
    desktop.placements.clear();
    restore.GetPosition(fixed);
    EXPECT_EQ(Place(), (WindowPlacement{1, 11, 12, 13, 14, {30, 40, 30 + kFormWidth, 40 + kFormHeight}}));
  }
}

TEST_F(RestorePosition, GivesASizableFormTheSavedSize) {
  SavePlace(kSaved);
  for (const auto border : {Form::Border::Sizable, Form::Border::SizableToolWindow}) {
    SCOPED_TRACE(static_cast<int>(border));
    PlacedForm sizable(border);
    desktop.placements.clear();
    restore.GetPosition(sizable);
    EXPECT_EQ(Place(), kSaved);
  }
}

TEST_F(RestorePosition, ReadsNumbersThatWereSavedAsTexts) {
  Save("WindowState", "3");
  Save("NormalPosLeft", "-30");
  Save("NormalPosTop", " 40 pixels");
  Save("NormalPosRight", "600.5");
  restore.GetPosition(form);
  EXPECT_EQ(Place(), (WindowPlacement{3, 0, 0, 0, 0, {-30, 40, 600, 0}}));
}

TEST_F(RestorePosition, CountsWhatIsAbsentOrNoNumberAsZero) {
  Save("WindowState", 1);
  Save("MinPosX", "left");
  Save("NormalPosRight", "");
  restore.GetPosition(form);
  EXPECT_EQ(Place(), (WindowPlacement{1, 0, 0, 0, 0, {0, 0, 0, 0}}));
}

TEST_F(RestorePosition, RefusesNumbersThatNoWindowHas) {
  Save("WindowState", "99999999999");
  EXPECT_EQ(NumberOf([&] { restore.GetPosition(form); }), 6);
  Save("WindowState", 1);
  Save("NormalPosLeft", std::numeric_limits<std::int32_t>::max());
  PlacedForm fixed(Form::Border::FixedSingle);
  EXPECT_EQ(NumberOf([&] { restore.GetPosition(fixed); }), 6);
  EXPECT_EQ(Place(), std::nullopt);
}

TEST_F(RestorePosition, ReadsTheSectionOfItsKeyNameAndTheForm) {
  EXPECT_EQ(restore.KeyName(), "Windows settings");
  SavePlace(kSaved);
  restore.KeyName("Places");
  restore.GetPosition(form);
  EXPECT_EQ(Place(), std::nullopt);
  settings.SaveSetting("Places\\frmPlaced", "WindowState", 3);
  restore.GetPosition(form);
  EXPECT_EQ(Place(), (WindowPlacement{3, 0, 0, 0, 0, {}}));
}

TEST_F(RestorePosition, DoesNotMindADesktopThatRefuses) {
  desktop.takes_placements = false;
  SavePlace(kSaved);
  EXPECT_NO_THROW(restore.GetPosition(form));
  EXPECT_EQ(Place(), std::nullopt);
}

TEST_F(RestorePosition, WithoutAStoreIsNotInitialized) {
  CFormRestore bare;
  bare.CenteredByDefault(true);
  desktop.placements["frmPlaced"] = kSaved;
  ExpectError(ErrorOf([&] { bare.GetPosition(form); }), 0x80044499, "Object not properly initialized",
              "Mirelo.CFormRestore");
  EXPECT_EQ(Place(), kSaved);
}

TEST_F(RestorePosition, RaisesTheErrorsOfStoreAndDesktop) {
  SavePlace(kSaved);
  registry.Raise("RegOpenKeyExA", 3);
  ExpectError(ErrorOf([&] { restore.GetPosition(form); }), 0x80044284, "CAppSettings component failure",
              "Mirelo.CAppSettings");
  EXPECT_EQ(Place(), std::nullopt);
  TestHost windowless;
  windowless.Use(registry);
  const host::HostScope scope(windowless);
  EXPECT_EQ(NumberOf([&] { restore.GetPosition(form); }), 445);
}

class CenteredForm : public PlacementTest {
 protected:
  CenteredForm() {
    restore.CenteredByDefault(true);
    desktop.screen = WindowPlacement{1, -1, -1, -1, -1, {0, 0, 1000, 800}};
    desktop.placements["frmPlaced"] = kNow;
  }

  static constexpr WindowPlacement kNow{1, 1, 2, 3, 4, {10, 20, 610, 320}};
};

TEST_F(CenteredForm, KeepsItsSizeInTheMiddleOfTheScreen) {
  restore.GetPosition(form);
  EXPECT_EQ(Place(), (WindowPlacement{0, 1, 2, 3, 4, {200, 250, 800, 550}}));
}

TEST_F(CenteredForm, IsMeasuredByTheScreensSizeAlone) {
  desktop.screen->normal = {-500, 100, 500, 900};
  restore.GetPosition(form);
  EXPECT_EQ(Place()->normal, (host::WindowRectangle{200, 250, 800, 550}));
}

TEST_F(CenteredForm, SticksOutOnBothSidesWhenItIsLargerThanTheScreen) {
  desktop.screen->normal = {0, 0, 400, 200};
  restore.GetPosition(form);
  EXPECT_EQ(Place()->normal, (host::WindowRectangle{-100, -50, 500, 250}));
}

TEST_F(CenteredForm, StaysHiddenAndKeepsTheStateToOpenIn) {
  form.WindowState(Form::State::Maximized);
  restore.GetPosition(form);
  EXPECT_EQ(Place()->state, WindowPlacement::kHidden);
  EXPECT_FALSE(form.Visible());
  EXPECT_EQ(form.WindowState(), Form::State::Maximized);
}

TEST_F(CenteredForm, ThatIsVisibleIsShownAsItIs) {
  form.Show();
  restore.GetPosition(form);
  EXPECT_EQ(*Place(), (WindowPlacement{5, 1, 2, 3, 4, {200, 250, 800, 550}}));
}

TEST_F(CenteredForm, KeepsItsPlaceWhileItIsNotAtItsNormalSize) {
  for (const std::int32_t state : {0, 2, 3, 5}) {
    SCOPED_TRACE(state);
    WindowPlacement now = kNow;
    now.state = state;
    desktop.placements["frmPlaced"] = now;
    restore.GetPosition(form);
    EXPECT_EQ(Place()->normal, kNow.normal);
  }
}

TEST_F(CenteredForm, KeepsItsPlaceOnADesktopWithoutAScreen) {
  desktop.screen.reset();
  restore.GetPosition(form);
  EXPECT_EQ(Place()->normal, kNow.normal);
}

TEST_F(CenteredForm, IsLeftAloneByADesktopThatDoesNotKnowItsPlace) {
  desktop.placements.clear();
  restore.GetPosition(form);
  EXPECT_EQ(Place(), std::nullopt);
}

TEST_F(CenteredForm, TakesItsSavedPlaceWhenThereIsOne) {
  SavePlace(kSaved);
  restore.GetPosition(form);
  EXPECT_EQ(Place(), kSaved);
}

}  // namespace
}  // namespace mirelo::testing
