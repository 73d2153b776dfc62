#include <functional>

#include "dialog/dialog_test.h"
#include "host/window_placement.h"
#include "support/logging_registry.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct Ending {
  const char* name;
  std::function<void(frmMirelo&)> act;
  bool keeps;  // the widths of columns and the window's place
};

class Closing : public DialogTest {
 protected:
  Closing() {
    desktop.screen = {.normal = {0, 0, 1000, 800}};
    desktop.placements["frmMirelo"] = {.normal = {0, 0, 400, 500}};
  }

  // All ways out of the dialog that commit nothing.
  const Ending endings[4] = {
      {"Close", [](frmMirelo& form) { form.ButClose.UserPress(); }, true},
      {"Cancel", [](frmMirelo& form) { form.ButCancel.UserPress(); }, false},
      {"Escape", [](frmMirelo& form) { form.UserEscape(); }, false},
      {"close box", [](frmMirelo& form) { form.Close(); }, false},
  };

  std::int32_t PlaceOfWindow() const {
    return Stored("Windows settings\\frmMirelo", "NormalPosLeft").ToInt32();
  }
};

TEST_F(Closing, HidesTheDialogAndCommitsNothing) {
  for (const Ending& ending : endings) {
    SCOPED_TRACE(ending.name);
    EXPECT_EQ(Show([&](frmMirelo& form) {
                form.C1TTickersSettings.UserSelect(kSettings);
                form.txtWebAddress.UserEdit("10.0.0.1");
                ending.act(form);
                EXPECT_FALSE(form.Visible());
                EXPECT_THAT(CallStack(), ElementsAre("Mirelo.cMirelo.LoadFrmMirelo"));
              }),
              2);
    EXPECT_TRUE(Stored("Settings", "Webaddress").IsEmpty());
  }
}

// Only Go stores what the dialog shows; the change itself never does.
TEST_F(Closing, StoresNothingOfWhatThePersonHasChanged) {
  Save("Seconds", "0");
  Show();  // the first dialog stores the sources that are offered at first
  LoggingRegistry log{registry};
  host.Use(log);
  Show([](frmMirelo& form) {
    form.txtTicker.UserEdit("MSFT");
    form.ButAdd.UserPress();
    form.FG.UserResizeColumn(1, 2345);
    form.txtRows.UserEdit("30");
    form.chkLimitRows.UserClick();
    form.C1TTickersSettings.UserSelect(kSettings);
    for (forms::TextBox* box : {&form.txtSec, &form.txtDecimalPlaces, &form.txtVerticalSheet,
                                &form.txtHTTPPort, &form.txtSocketPort, &form.txtWebAddress}) {
      box->UserEdit("3");
    }
    form.txtSec.UserEdit("0");
    form.ComQuoteSource.UserChoose(4);
    form.ComDisplayTimezone.UserChoose(4);
    form.ComDisplayOffset.UserChoose(4);
    form.ComStyle.UserChoose(2);
    form.chkStyleOrNot.UserClick();
    form.chkUpdOrNot.UserClick();
    form.C1TTickersSettings.UserSelect(kCharting);
    for (forms::CheckBox* box :
         {&form.chkBuildCharts, &form.chkColorPoints, &form.chkGreyOut, &form.chkAddYAxis}) {
      box->UserClick();
      EXPECT_EQ(box->Value(), box == &form.chkBuildCharts || box == &form.chkAddYAxis ? 1 : 0);
    }
    form.ComChartStyle.UserChoose(2);
    form.txtChartPoints.UserEdit("30");
    form.chkChartStyle.UserClick();
    form.C1TTickersSettings.UserSelect(kFields);
    form.ButRight.UserPress();
    form.ButCancel.UserPress();
  });
  host.Use(registry);
  EXPECT_THAT(log.writes, IsEmpty());
}

TEST_F(Closing, UnloadingHidesTheDialogWithTheTagTwoAsCancelDoes) {
  Show([](frmMirelo& form) {
    form.Form_Unload();
    EXPECT_FALSE(form.Visible());
    EXPECT_EQ(form.Tag(), "2");
    EXPECT_THAT(CallStack(), ElementsAre("Mirelo.cMirelo.LoadFrmMirelo"));
  });
}

TEST_F(Closing, LeavesTheTagTwoBehindOrNothingOfAClosedWindow) {
  for (const Ending& ending : endings) {
    SCOPED_TRACE(ending.name);
    Show([&](frmMirelo& form) {
      ending.act(form);
      EXPECT_EQ(form.Tag(), std::string(ending.name) == "close box" ? "" : "2");
    });
  }
}

TEST_F(Closing, KeepsColumnWidthsOnlyWithClose) {
  for (const Ending& ending : endings) {
    SCOPED_TRACE(ending.name);
    Save("VerticalTable", 0);
    mGlobal::AppSettings().SaveSetting("Settings\\WidthField", "Ticker", 1700);
    Show([&](frmMirelo& form) {
      ASSERT_EQ(form.FG.TextMatrix(0, 0), "Ticker");
      form.FG.UserResizeColumn(0, 2345);
      ending.act(form);
    });
    EXPECT_EQ(StoredWidth("Ticker").ToInt32(), ending.keeps ? 2345 : 1700);
  }
}

TEST_F(Closing, KeepsTheWindowsPlaceOnlyWithClose) {
  for (const Ending& ending : endings) {
    SCOPED_TRACE(ending.name);
    mGlobal::AppSettings().SaveSetting("Windows settings\\frmMirelo", "NormalPosLeft", 5);
    Show([&](frmMirelo& form) {
      desktop.placements["frmMirelo"].normal.left = 123;
      ending.act(form);
    });
    EXPECT_EQ(PlaceOfWindow(), ending.keeps ? 123 : 5);
  }
}

TEST_F(Closing, StoresTheWidthOfEachColumnWithAHeaderWhateverTheMode) {
  Show([](frmMirelo& form) {
    form.FG.Cols(4);
    form.FG.TextMatrix(0, 0, "");
    form.FG.TextMatrix(0, 1, "Ticker");
    form.FG.TextMatrix(0, 2, "Last");
    form.FG.TextMatrix(0, 3, "Bid");
    for (const std::int32_t col : {0, 1, 2, 3}) form.FG.UserResizeColumn(col, 100 * (col + 1));
    form.ButClose.UserPress();
  });
  EXPECT_TRUE(StoredWidth("").IsEmpty());
  EXPECT_EQ(StoredWidth("Ticker").ToInt32(), 200);
  EXPECT_EQ(StoredWidth("Last").ToInt32(), 300);
  EXPECT_EQ(StoredWidth("Bid").ToInt32(), 400);
}

TEST_F(Closing, OpensTheNextDialogWhereCloseLeftIt) {
  Show([&](frmMirelo& form) {
    desktop.placements["frmMirelo"].normal = {40, 50, 460, 570};
    form.ButClose.UserPress();
  });
  desktop.placements["frmMirelo"].normal = {0, 0, 400, 500};
  Show();
  EXPECT_EQ(desktop.placements["frmMirelo"].normal, (host::WindowRectangle{40, 50, 460, 570}));
}

TEST_F(Closing, PutsADialogWithoutASavedPlaceIntoTheMiddleOfTheScreen) {
  Show();
  EXPECT_EQ(desktop.placements["frmMirelo"].normal, (host::WindowRectangle{300, 150, 700, 650}));
}

TEST_F(Closing, LeavesTheDialogUpWhenTheCommitRefuses) {
  Save("BuildCharts", 1);  // so that the box which is refused can take the focus
  EXPECT_EQ(Show([](frmMirelo& form) {
              form.txtChartPoints.Text("3");  // below what the commit takes
              form.C1TTickersSettings.UserSelect(kSettings);
              form.txtWebAddress.UserEdit("10.0.0.1");
              form.ButGo.UserPress();
              EXPECT_TRUE(form.Visible());
              EXPECT_EQ(form.Tag(), "");
              EXPECT_EQ(form.txtChartPoints.Text(), "3");
              EXPECT_EQ(form.txtWebAddress.Text(), "10.0.0.1");
              form.ButCancel.UserPress();
            }),
            2);
}

// A store that takes no widths: what Close does statement by statement.
class ClosingWithAFailingStore : public Closing {
 protected:
  ClosingWithAFailingStore() { Save("VerticalTable", 0); }

  void ResizeAndClose(frmMirelo& form) {
    form.FG.UserResizeColumn(0, 2345);
    registry.Fail("RegCreateKeyExA");
    form.ButClose.UserPress();
  }
  // The report brings the dialog back to front, which fills it anew; this keeps it as it is.
  static void KeepControls(frmMirelo& form) { form.ReloadOnActivate(false); }
};

TEST_F(ClosingWithAFailingStore, StoresTheWidthAgainOnRetry) {
  Answers({"RETRY"});
  Show([&](frmMirelo& form) {
    KeepControls(form);
    ResizeAndClose(form);
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_EQ(StoredWidth("Ticker").ToInt32(), 2345);
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tin Mirelo.frmMirelo.ButClose_Click at line 0"));
}

TEST_F(ClosingWithAFailingStore, GoesOnWithThePlaceWhenThatIsIgnored) {
  Answers({"IGNORE"});
  Show([&](frmMirelo& form) {
    ResizeAndClose(form);
    EXPECT_FALSE(form.Visible());
    EXPECT_EQ(form.Tag(), "2");
  });
  EXPECT_TRUE(StoredWidth("Ticker").IsEmpty());
  EXPECT_EQ(PlaceOfWindow(), 300);
}

TEST_F(ClosingWithAFailingStore, StaysOpenWhenThatIsAborted) {
  Answers({"ABORT"});
  Show([&](frmMirelo& form) {
    ResizeAndClose(form);
    EXPECT_TRUE(form.Visible());
    EXPECT_THAT(CallStack(), IsEmpty());
    form.ButCancel.UserPress();
  });
}

// Once its place is saved the dialog has no placement object any more.
TEST_F(ClosingWithAFailingStore, DropsThePlacementObjectEvenWhenThePlaceCannotBeSaved) {
  Answers({"IGNORE", "IGNORE"});
  Show([&](frmMirelo& form) {
    KeepControls(form);
    registry.Fail("RegCreateKeyExA", 2);  // the first one is the width's
    form.ButClose.UserPress();
    form.ButClose.Click.Raise();
  });
  ASSERT_THAT(desktop.reports, SizeIs(2));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("Failed saving the application setting"));
  EXPECT_THAT(desktop.reports[1].text, HasSubstr("\tError: 91, "));
}

}  // namespace
}  // namespace mirelo::testing
