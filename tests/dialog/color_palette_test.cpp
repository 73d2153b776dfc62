#include <gmock/gmock.h>

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "automation/runtime_error.h"
#include "dialog/color_test.h"
#include "host/window_placement.h"

namespace mirelo::testing {
namespace {

using host::WindowPlacement;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Cell {
  std::size_t index;
  const char* name;
  std::int32_t color;
};

constexpr Cell kCells[] = {{1, "Black", 0},
                           {2, "Dark Red", 128},
                           {3, "Red", 255},
                           {4, "Pinc", 16711935},
                           {5, "Rose", 13408767},
                           {6, "Brown", 13209},
                           {7, "Orange", 26367},
                           {8, "Light Orange", 39423},
                           {9, "Gold", 52479},
                           {10, "Tan", 10079487},
                           {11, "Oleve Green", 13107},
                           {12, "Dark Yellow", 32896},
                           {13, "Lime", 52377},
                           {14, "Yellow", 65535},
                           {15, "Light Yellow", 10092543},
                           {16, "Dark Green", 13056},
                           {17, "Green", 32768},
                           {18, "Sea Green", 6723891},
                           {19, "Bright Green", 65280},
                           {20, "Light Green", 13434828},
                           {21, "DarkTeal", 6697728},
                           {22, "Teal", 8421376},
                           {23, "Aqua", 13421619},
                           {24, "Turquoise", 16776960},
                           {25, "Light Turquoise", 16777164},
                           {26, "DarkBlue", 8388608},
                           {27, "Blue", 16711680},
                           {28, "Light Blue", 16737843},
                           {29, "Sky Blue", 16763904},
                           {30, "Pale Blue", 16764057},
                           {31, "Indigo", 10040115},
                           {32, "Blue-Gray", 10053222},
                           {33, "Violet", 8388736},
                           {34, "Plum", 6697881},
                           {35, "Lavender", 16751052},
                           {36, "Gray-80%", 3355443},
                           {37, "Gray-50%", 8421504},
                           {38, "Gray-40%", 9868950},
                           {39, "Gray-25%", 12632256},
                           {40, "White", 16777215}};

// The palette by itself, with the settings store in hand.
class ColorPalette : public ColorTest {
 protected:
  ColorPalette() { palette.frmAppSettings(&mGlobal::AppSettings()); }

  // Shows the palette with this colour as the present one, and lets the person act on it.
  void Show(
      const std::string& tag, std::function<void(frmColor&)> act = [](frmColor&) {}) {
    palette.Tag(tag);
    desktop.person["frmColor"] = [act = std::move(act)](forms::Form& form) {
      act(dynamic_cast<frmColor&>(form));
    };
    desktop.ShowModal(palette);
  }
  std::vector<std::size_t> MarkedCells() const {
    std::vector<std::size_t> marked;
    for (std::size_t i = 0; i < frmColor::kCells; ++i) {
      if (palette.L1[i]->BorderStyle() == 1) marked.push_back(i);
    }
    return marked;
  }
  static Variant SavedPlace(const char* key) {
    return mGlobal::AppSettings().GetSetting("Windows settings\\frmColor", key, "absent");
  }

  frmColor palette;
};

TEST_F(ColorPalette, IsAFormOfOnePanelAndFortyOneCells) {
  EXPECT_EQ(palette.Name(), "frmColor");
  EXPECT_EQ(palette.Caption(), "Fill Color");
  const auto& controls = palette.Controls();
  ASSERT_EQ(controls.size(), 42U);
  EXPECT_EQ(controls[0]->Name(), "C1ElasticColor");
  EXPECT_EQ(controls[0]->Parent(), nullptr);
  for (std::size_t i = 0; i < frmColor::kCells; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(controls[i + 1], palette.L1[i].get());
    EXPECT_EQ(palette.L1[i]->Name(), "L1(" + std::to_string(i) + ")");
    EXPECT_EQ(palette.L1[i]->Parent(), &palette.C1ElasticColor);
    EXPECT_EQ(palette.L1[i]->BorderStyle(), 0);
  }
}

TEST_F(ColorPalette, StartsWithACellForNoFill) {
  EXPECT_EQ(palette.L1[0]->Caption(), "No Fill");
  EXPECT_EQ(palette.L1[0]->ToolTipText(), "No Fill");
  EXPECT_EQ(palette.L1[0]->BackColor(), static_cast<std::int32_t>(0x80000005));
}

TEST_F(ColorPalette, ShowsFortyNamedColors) {
  ASSERT_EQ(std::size(kCells), 40U);
  for (const Cell& cell : kCells) {
    SCOPED_TRACE(cell.index);
    EXPECT_EQ(palette.L1[cell.index]->ToolTipText(), cell.name);
    EXPECT_EQ(palette.L1[cell.index]->BackColor(), cell.color);
    EXPECT_EQ(palette.L1[cell.index]->Caption(), "");
  }
}

// A pick that the spreadsheet had no index for could not be told from no fill.
TEST_F(ColorPalette, HasExactlyTheColorsThatTheSpreadsheetHasAnIndexFor) {
  std::set<std::int32_t> indexes;
  for (const Cell& cell : kCells) indexes.insert(mGlobal::GetColorIndex(cell.color));
  EXPECT_EQ(indexes.size(), std::size(kCells));
  EXPECT_EQ(indexes.count(-4142), 0U);
}

TEST_F(ColorPalette, MarksThePresentColor) {
  for (const Cell& cell : kCells) {
    SCOPED_TRACE(cell.name);
    frmColor fresh;
    fresh.frmAppSettings(&mGlobal::AppSettings());
    fresh.Tag(std::to_string(cell.color));
    desktop.ShowModal(fresh);
    for (std::size_t i = 0; i < frmColor::kCells; ++i) {
      EXPECT_EQ(fresh.L1[i]->BorderStyle(), i == cell.index ? 1 : 0) << i;
    }
  }
}

TEST_F(ColorPalette, MarksTheCellForNoFill) {
  Show("-4142");
  EXPECT_THAT(MarkedCells(), ElementsAre(0));
}

TEST_F(ColorPalette, MarksNothingForAColorThatNoCellHas) {
  for (const char* tag : {"1", "254", "-1", "16777216", "99999999999"}) {
    SCOPED_TRACE(tag);
    Show(tag);
    EXPECT_THAT(MarkedCells(), IsEmpty());
  }
  EXPECT_THAT(desktop.reports, IsEmpty());
}

TEST_F(ColorPalette, MarksEveryCellOfTheColor) {
  palette.L1[30]->BackColor(255);
  Show("255");
  EXPECT_THAT(MarkedCells(), ElementsAre(3, 30));
}

TEST_F(ColorPalette, AnswersAClickWithTheCellsColorAndHides) {
  for (const Cell& cell : kCells) {
    SCOPED_TRACE(cell.name);
    Show("255", [&](frmColor& form) {
      form.L1[cell.index]->UserClick();
      EXPECT_FALSE(form.Visible());
    });
    EXPECT_EQ(palette.Tag(), std::to_string(cell.color));
  }
}

TEST_F(ColorPalette, AnswersAClickOnNoFillWithItsNumberAndHides) {
  Show("255", [](frmColor& form) {
    form.L1[0]->UserClick();
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_EQ(palette.Tag(), "-4142");
}

TEST_F(ColorPalette, AnswersNothingWhenItIsCanceledOrClosed) {
  Show("255", [](frmColor& form) {
    form.cmdEsc_Click();
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_EQ(palette.Tag(), "");
  Show("255", [](frmColor& form) { form.Close(); });
  EXPECT_EQ(palette.Tag(), "");
}

TEST_F(ColorPalette, IsEndedByNeitherEnterNorEscape) {
  Show("255", [](frmColor& form) {
    form.UserEnter();
    form.UserEscape();
    EXPECT_TRUE(form.Visible());
    EXPECT_EQ(form.Tag(), "255");
  });
}

TEST_F(ColorPalette, OpensWhereItWasSavedWithItsOwnSize) {
  for (const auto& [key, value] :
       {std::pair{"WindowState", 1}, {"NormalPosLeft", 70}, {"NormalPosTop", 80}, {"NormalPosRight", 900}}) {
    mGlobal::AppSettings().SaveSetting("Windows settings\\frmColor", key, value);
  }
  Show("255");
  const auto place = desktop.GetWindowPlacement(palette);
  ASSERT_TRUE(place);
  EXPECT_EQ(place->normal.left, 70);
  EXPECT_EQ(place->normal.top, 80);
  EXPECT_EQ(place->normal.right, 70 + palette.Width() / host::kTwipsPerPixel);
  EXPECT_EQ(place->normal.bottom, 80 + palette.Height() / host::kTwipsPerPixel);
}

TEST_F(ColorPalette, SavesItsPlaceWhenAColorIsPicked) {
  desktop.placements["frmColor"] = WindowPlacement{1, -1, -1, -1, -1, {11, 12, 13, 14}};
  Show("255", [](frmColor& form) { form.L1[1]->UserClick(); });
  EXPECT_EQ(SavedPlace("NormalPosLeft"), Variant(11));
}

TEST_F(ColorPalette, SavesItsPlaceWhenItIsClosed) {
  desktop.placements["frmColor"] = WindowPlacement{1, -1, -1, -1, -1, {11, 12, 13, 14}};
  Show("255", [](frmColor& form) { form.Close(); });
  EXPECT_EQ(SavedPlace("NormalPosLeft"), Variant(11));
}

TEST_F(ColorPalette, DoesNotSaveItsPlaceWhenItIsCanceled) {
  desktop.placements["frmColor"] = WindowPlacement{1, -1, -1, -1, -1, {11, 12, 13, 14}};
  Show("255", [](frmColor& form) { form.cmdEsc_Click(); });
  EXPECT_EQ(SavedPlace("WindowState"), Variant("absent"));
}

TEST_F(ColorPalette, SavesItsPlaceOnlyOnce) {
  desktop.placements["frmColor"] = WindowPlacement{1, -1, -1, -1, -1, {11, 12, 13, 14}};
  Show("255", [&](frmColor& form) {
    form.L1[1]->UserClick();
    desktop.placements["frmColor"].normal.left = 21;
    form.Close();
  });
  EXPECT_EQ(SavedPlace("NormalPosLeft"), Variant(11));
}

TEST_F(ColorPalette, EntersAndLeavesItsRoutinesByName) {
  const auto traces = Traces([&] {
    Show("255", [](frmColor& form) { form.L1[1]->UserClick(); });
    Show("255", [](frmColor& form) { form.cmdEsc_Click(); });
    palette.Close();
  });
  EXPECT_THAT(traces,
              ElementsAre("Entered Mirelo.frmColor.Form_Load", "Exited Mirelo.frmColor.Form_Load",
                          "Entered Mirelo.frmColor.Form_Activate", "Exited Mirelo.frmColor.Form_Activate",
                          "Entered Mirelo.frmColor.L1_Click", "Entered Mirelo.frmColor.SaveParameters",
                          "Exited Mirelo.frmColor.SaveParameters", "Exited Mirelo.frmColor.L1_Click",
                          "Entered Mirelo.frmColor.Form_Activate", "Exited Mirelo.frmColor.Form_Activate",
                          "Entered Mirelo.frmColor.cmdEsc_Click", "Exited Mirelo.frmColor.cmdEsc_Click",
                          "Entered Mirelo.frmColor.Form_Unload", "Entered Mirelo.frmColor.SaveParameters",
                          "Exited Mirelo.frmColor.SaveParameters", "Exited Mirelo.frmColor.Form_Unload"));
}

TEST_F(ColorPalette, ReportsAPlaceThatCannotBeReadAndShowsAllTheSame) {
  Answers({"IGNORE"});
  registry.Raise("RegOpenKeyExA");
  Show("255", [](frmColor& form) { EXPECT_TRUE(form.Visible()); });
  EXPECT_THAT(ReportedRoutines(), ElementsAre("Mirelo.frmColor.Form_Load"));
  EXPECT_THAT(MarkedCells(), ElementsAre(3));
}

TEST_F(ColorPalette, SavesItsPlaceAgainOnRetry) {
  desktop.placements["frmColor"] = WindowPlacement{1, -1, -1, -1, -1, {11, 12, 13, 14}};
  Answers({"RETRY"});
  registry.Fail("RegSetValueExA", 7);
  Show("255", [](frmColor& form) { form.L1[1]->UserClick(); });
  EXPECT_THAT(ReportedRoutines(), ElementsAre("Mirelo.frmColor.SaveParameters"));
  EXPECT_EQ(SavedPlace("NormalPosBottom"), Variant(14));
  EXPECT_EQ(palette.Tag(), "0");
}

// The abort ends the saving alone: the routine that called it goes on and hides the form.
TEST_F(ColorPalette, KeepsThePickWhenSavingItsPlaceIsAborted) {
  desktop.placements["frmColor"] = WindowPlacement{1, -1, -1, -1, -1, {11, 12, 13, 14}};
  Answers({"ABORT"});
  registry.Fail("RegSetValueExA");
  Show("255", [](frmColor& form) {
    form.L1[1]->UserClick();
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_EQ(palette.Tag(), "0");
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(ColorPalette, StaysUpWhenMarkingTheColorIsAborted) {
  Answers({"ABORT"});
  bool broken = true;
  palette.L1[3]->Appearance.Subscribe([&] {
    if (std::exchange(broken, false)) throw Errors::OutOfMemory();
  });
  Show("255", [](frmColor& form) { EXPECT_EQ(form.L1[3]->BorderStyle(), 1); });
  EXPECT_THAT(ReportedRoutines(), ElementsAre("Mirelo.frmColor.Form_Activate"));
}

TEST_F(ColorPalette, ReportsAMissingStoreWhenItLoadsAndWhenItSavesItsPlace) {
  palette.frmAppSettings(nullptr);
  Show("255");
  EXPECT_THAT(ReportedErrors(), ElementsAre(ErrorNumber(0x8004449A), ErrorNumber(0x80044499)));
  EXPECT_THAT(ReportedRoutines(), ElementsAre("Mirelo.frmColor.Form_Load", "Mirelo.frmColor.SaveParameters"));
}

TEST_F(ColorPalette, OffersOnlyColorsThatFillCells) {
  std::set<std::int32_t> indexes;
  for (const Cell& cell : kCells) indexes.insert(mGlobal::GetColorIndex(cell.color));
  EXPECT_EQ(indexes.size(), std::size(kCells));
  EXPECT_FALSE(indexes.contains(-4142));
}

}  // namespace
}  // namespace mirelo::testing
