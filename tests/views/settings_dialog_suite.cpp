// What the settings dialog does for a person, whichever toolkit shows it.

#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "forms/form.h"
#include "views/settings_dialog_rig.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using Rig = SettingsDialogRig;

class SettingsDialogForAPerson : public ::testing::Test {
 protected:
  void Cancels() {
    dialog.Does("cancel", [&] { dialog.Click("ButCancel"); });
    EXPECT_EQ(dialog.LoadFrmMirelo(), 2);
  }
  static std::string FormOnTop() { return forms::ActiveForm() == nullptr ? "" : forms::ActiveForm()->Name(); }

  std::unique_ptr<Rig> rig = NewSettingsDialogRig();
  Rig& dialog = *rig;
};

TEST_F(SettingsDialogForAPerson, OpensOnItsFirstTabWithTheDefaults) {
  dialog.Does("look at the first tab", [&] {
    EXPECT_TRUE(dialog.IsShown("FG"));
    EXPECT_TRUE(dialog.IsShown("txtTicker"));
    EXPECT_FALSE(dialog.IsShown("txtSec"));
    EXPECT_TRUE(dialog.IsTicked("chkVerTable"));
    EXPECT_EQ(dialog.TextOf("txtRows"), "20");
    dialog.Open(Rig::kSettings);
  });
  dialog.Does("look at the second", [&] {
    EXPECT_FALSE(dialog.IsShown("FG"));
    EXPECT_FALSE(dialog.IsShown("txtTicker"));
    EXPECT_TRUE(dialog.IsShown("txtSec"));
    EXPECT_EQ(dialog.TextOf("txtSec"), "60");
    EXPECT_EQ(dialog.TextOf("ComStyle"), "Blue");
    EXPECT_EQ(dialog.TextOf("txtDecimalPlaces"), "2");
    EXPECT_EQ(dialog.TextOf("ComDisplayTimezone"), "(ET) US Eastern");
    EXPECT_FALSE(dialog.IsEnabled("ComQuoteSource"));
    dialog.Open(Rig::kCharting);
  });
  dialog.Does("look at the third", [&] {
    EXPECT_TRUE(dialog.IsShown("ComChartStyle"));
    EXPECT_FALSE(dialog.IsTicked("chkBuildCharts"));
    dialog.Open(Rig::kFields);
  });
  dialog.Does("look at the last", [&] {
    EXPECT_THAT(dialog.Items("ListRight"),
                ElementsAre("Ticker", "Last", "Change", "Bid", "Ask", "Date", "Time"));
    EXPECT_EQ(dialog.Items("ListLeft").size(), 12U);
  });
  Cancels();
}

TEST_F(SettingsDialogForAPerson, MakesTheTableOfTheTickersThatAreTyped) {
  dialog.AddsTicker("msft");
  dialog.AddsTicker("ibm");
  dialog.Does("look, and go", [&] {
    EXPECT_THAT(dialog.Tickers(), ElementsAre("MSFT", "IBM"));
    EXPECT_EQ(dialog.TextOf("txtTicker"), "");
    dialog.Click("ButGo");
  });
  EXPECT_EQ(dialog.LoadFrmMirelo(), 78);
  EXPECT_EQ(dialog.CellOf(2, 1), "Ticker");
  EXPECT_EQ(dialog.CellOf(2, 2), "Last");
  EXPECT_EQ(dialog.CellOf(3, 1), "MSFT");
  EXPECT_EQ(dialog.CellOf(4, 1), "IBM");
}

TEST_F(SettingsDialogForAPerson, TicksTheFieldsThatAreClicked) {
  dialog.AddsTicker("msft");
  dialog.AddsTicker("ibm");
  dialog.Does("click a cell", [&] { dialog.ClickCell(2, "Last"); });
  dialog.Does("click another, and look", [&] {
    EXPECT_THAT(dialog.Ticked(), ElementsAre("IBM Last"));
    dialog.ClickCell(1, "Bid");
  });
  dialog.Does("click a header", [&] {
    EXPECT_THAT(dialog.Ticked(), ElementsAre("MSFT Bid", "IBM Last"));
    dialog.ClickHeader("Ask");
  });
  dialog.Does("take a tick away", [&] {
    EXPECT_THAT(dialog.Ticked(), ElementsAre("MSFT Bid", "MSFT Ask", "IBM Last", "IBM Ask"));
    dialog.ClickCell(2, "Last");
  });
  dialog.Does("press the blank key", [&] {
    EXPECT_THAT(dialog.Ticked(), ElementsAre("MSFT Bid", "MSFT Ask", "IBM Ask"));
    dialog.Press(Rig::Key::kBlank);
  });
  dialog.Does("look", [&] {
    EXPECT_THAT(dialog.Ticked(), ElementsAre("MSFT Bid", "MSFT Ask", "IBM Last", "IBM Ask"));
  });
  Cancels();
}

TEST_F(SettingsDialogForAPerson, IsToldOfLettersInANumberAndKeepsThem) {
  dialog.Does("open the settings", [&] { dialog.Open(Rig::kSettings); });
  dialog.Does("go behind the number", [&] {
    dialog.Click("txtSec");
    dialog.Press(Rig::Key::kEnd);
  });
  dialog.Does("type a letter", [&] { dialog.Type("x"); });
  dialog.Answers("The value must be a digit.", Rig::Button::kOk);
  dialog.Does("take it away", [&] {
    EXPECT_EQ(dialog.TextOf("txtSec"), "60x");
    dialog.Press(Rig::Key::kBackspace);
  });
  dialog.Does("look", [&] { EXPECT_EQ(dialog.TextOf("txtSec"), "60"); });
  Cancels();
}

TEST_F(SettingsDialogForAPerson, CountsUpAndDownByItsArrows) {
  dialog.Does("open the settings", [&] { dialog.Open(Rig::kSettings); });
  dialog.Does("press the upper arrow",
              [&] { dialog.ClickUpperArrow("VScrollDecimalplaces", "txtDecimalPlaces"); });
  dialog.Does("press the lower arrow", [&] {
    EXPECT_EQ(dialog.TextOf("txtDecimalPlaces"), "3");
    dialog.ClickLowerArrow("VScrollDecimalplaces", "txtDecimalPlaces");
  });
  dialog.Does("look", [&] { EXPECT_EQ(dialog.TextOf("txtDecimalPlaces"), "2"); });
  Cancels();
}

TEST_F(SettingsDialogForAPerson, TakesFillColorsFromThePalette) {
  dialog.Does("open the settings", [&] { dialog.Open(Rig::kSettings); });
  dialog.Does("press On", [&] { dialog.Click("ButOn"); });
  dialog.Does("take a color", [&] {
    EXPECT_EQ(FormOnTop(), "frmColor");
    dialog.Click("L1(3)");
  });
  dialog.Does("look", [&] {
    EXPECT_EQ(FormOnTop(), "frmMirelo");
    EXPECT_EQ(dialog.ColorOf("txtOn"), 0xFF0000);
  });
  Cancels();
}

TEST_F(SettingsDialogForAPerson, AsksBeforeEnterTakesNoColor) {
  dialog.Does("open the settings", [&] { dialog.Open(Rig::kSettings); });
  dialog.Does("press On", [&] { dialog.Click("ButOn"); });
  dialog.Does("press Enter", [&] {
    EXPECT_EQ(FormOnTop(), "frmColor");
    dialog.Press(Rig::Key::kReturn);
  });
  dialog.Answers("Use no fill color?", Rig::Button::kNo);
  dialog.Does("press Escape, which is of no use", [&] {
    EXPECT_EQ(FormOnTop(), "frmColor");
    dialog.Press(Rig::Key::kEscape);
  });
  dialog.Does("look, and give up", [&] {
    EXPECT_EQ(FormOnTop(), "frmColor");
    EXPECT_TRUE(dialog.IsShown("L1(0)"));
    forms::ActiveForm()->Close();
  });
  Cancels();
}

TEST_F(SettingsDialogForAPerson, MovesColumnsByItsButtons) {
  std::string column;
  dialog.Does("open the fields", [&] { dialog.Open(Rig::kFields); });
  dialog.Does("choose a column", [&] {
    column = dialog.Items("ListLeft").at(1);
    dialog.ClickSecond("ListLeft");
  });
  dialog.Does("show it by the button", [&] { dialog.Click("ButRight"); });
  dialog.Does("look", [&] {
    EXPECT_THAT(dialog.Items("ListRight"), Contains(column));
    EXPECT_EQ(dialog.Items("ListLeft").size(), 11U);
  });
  Cancels();
}

TEST_F(SettingsDialogForAPerson, ChoosesFromLists) {
  dialog.Does("open the settings", [&] { dialog.Open(Rig::kSettings); });
  dialog.Does("choose the next style", [&] { dialog.ChooseNext("ComStyle"); });
  dialog.Does("look", [&] { EXPECT_EQ(dialog.TextOf("ComStyle"), "Green"); });
  Cancels();
}

}  // namespace
}  // namespace mirelo::testing
