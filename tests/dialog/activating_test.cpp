#include "dialog/control_facts.h"
#include "dialog/dialog_test.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

constexpr const char* kShowing = "Mirelo.cMirelo.LoadFrmMirelo";

// The dialog becomes the active form of the program: when it opens, and when a form over it closes.
class Activating : public DialogTest {
 protected:
  // Makes the dialog report a failure of its own, which the person aborts.
  void FailInside(frmMirelo& form) {
    registry.Fail("RegCreateKeyExA");
    form.ButClose.UserPress();
    EXPECT_TRUE(form.Visible());
  }
};

TEST_F(Activating, FillsTheDialogAnewWhenTheErrorDialogCloses) {
  Answers({"ABORT"});
  Show([&](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kSettings);
    form.txtWebAddress.UserEdit("10.0.0.1");
    form.txtSec.UserEdit("5");
    form.chkStyleOrNot.UserClick();
    FailInside(form);
    EXPECT_EQ(form.txtWebAddress.Text(), "127.0.0.1");
    EXPECT_EQ(form.txtSec.Text(), "60");
    EXPECT_EQ(form.ComStyle.Text(), "Blue");
    EXPECT_EQ(form.chkStyleOrNot.Value(), 1);
    EXPECT_EQ(form.C1TTickersSettings.CurrTab(), kTickers);
  });
}

TEST_F(Activating, ReadsWhatWasStoredMeanwhile) {
  Answers({"ABORT"});
  Show([&](frmMirelo& form) {
    Save("Webaddress", "10.0.0.2");
    FailInside(form);
    EXPECT_EQ(form.txtWebAddress.Text(), "10.0.0.2");
  });
}

TEST_F(Activating, LeavesTheDialogAsItIsWithoutReload) {
  Answers({"ABORT"});
  Show([&](frmMirelo& form) {
    EXPECT_TRUE(form.ReloadOnActivate());
    form.ReloadOnActivate(false);
    form.C1TTickersSettings.UserSelect(kSettings);
    form.txtWebAddress.UserEdit("10.0.0.1");
    FailInside(form);
    EXPECT_EQ(form.txtWebAddress.Text(), "10.0.0.1");
    EXPECT_EQ(form.C1TTickersSettings.CurrTab(), kSettings);
  });
}

TEST_F(Activating, LeavesItsNameOnTheCallStackWithoutReload) {
  Show([](frmMirelo& form) {
    form.ReloadOnActivate(false);
    form.Activate();
    form.Activate();
    EXPECT_THAT(CallStack(),
                ElementsAre(kShowing, "Mirelo.frmMirelo.Form_Activate", "Mirelo.frmMirelo.Form_Activate"));
  });
}

TEST_F(Activating, TakesItsNameFromTheCallStackWhenTheDialogIsFilled) {
  Show([](frmMirelo& form) {
    form.Activate();
    EXPECT_THAT(CallStack(), ElementsAre(kShowing));
  });
}

TEST_F(Activating, LeavesTheDialogAsItIsOnceAFillColourWasAskedFor) {
  for (const bool picked : {true, false}) {
    for (forms::Button frmMirelo::*button : {&frmMirelo::ButOn, &frmMirelo::ButOff}) {
      SCOPED_TRACE(picked ? "picked" : "closed");
      desktop.person["frmColor"] = [&](forms::Form& form) {
        if (picked) dynamic_cast<forms::Label&>(*form.Find("L1(1)")).UserClick();
      };
      Answers({"ABORT"});
      Show([&](frmMirelo& form) {
        form.C1TTickersSettings.UserSelect(kSettings);
        form.txtWebAddress.UserEdit("10.0.0.1");
        (form.*button).UserPress();
        EXPECT_FALSE(form.ReloadOnActivate());
        EXPECT_EQ(form.txtWebAddress.Text(), "10.0.0.1");
        EXPECT_EQ(form.C1TTickersSettings.CurrTab(), kSettings);
        EXPECT_THAT(CallStack(), SizeIs(2)) << "the return to the dialog left a name there";
        FailInside(form);
        EXPECT_EQ(form.txtWebAddress.Text(), "10.0.0.1");
      });
    }
  }
}

TEST_F(Activating, ReloadsAgainInTheNextDialog) {
  Show([](frmMirelo& form) { form.ReloadOnActivate(false); });
  Show([](frmMirelo& form) { EXPECT_TRUE(form.ReloadOnActivate()); });
}

TEST_F(Activating, FillsTheListsOnce) {
  Show([](frmMirelo& form) {
    form.Activate();
    EXPECT_THAT(form.ComDisplayTimezone.Items(), SizeIs(17));
    EXPECT_THAT(form.ComDisplayOffset.Items(), SizeIs(95));
    EXPECT_THAT(form.ComStyle.Items(), SizeIs(4));
    EXPECT_THAT(form.ComChartStyle.Items(), SizeIs(4));
    EXPECT_THAT(form.ListRight.Items(), SizeIs(7));
    EXPECT_THAT(form.ListLeft.Items(), SizeIs(12));
  });
}

TEST_F(Activating, SwitchesTheListButtonsOff) {
  Show([](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kFields);
    EXPECT_TRUE(form.ButRight.Enabled());
    form.Activate();
    for (const char* name : {"ButRight", "ButAllRight", "ButLeft", "ButAllLeft", "ButDown", "ButUp"})
      EXPECT_FALSE(form.Find(name)->Enabled()) << name;
  });
}

// Settings that cannot be read

struct SettingOfControl {
  const char* key;
  const char* control;
  const char* value;  // by default
  const char* left;   // when it cannot be read
};

// In the order in which they are read.
constexpr SettingOfControl kSettingsOfControls[] = {
    {"DisplayTimezone", "ComDisplayTimezone", "(ET) US Eastern", ""},
    {"DisplayOffset", "ComDisplayOffset", "0:00", ""},
    {"ChartStyle", "ComChartStyle", "Blue", ""},
    {"BuildCharts", "chkBuildCharts", "0", "0"},
    {"ColorPoints", "chkColorPoints", "1", "0"},
    {"AddYAxis", "chkAddYAxis", "0", "0"},
    {"GreyOut", "chkGreyOut", "1", "0"},
    {"ChartPoints", "txtChartPoints", "20", ""},
    {"txtDecimalPlaces", "txtDecimalPlaces", "2", ""},
    {"txtVerticalSheet", "txtVerticalSheet", "Quotes_Vertical", ""},
    {"Style", "ComStyle", "Blue", ""},
    {"Seconds", "txtSec", "60", ""},
    {"RowsLimit", "txtRows", "20", ""},
    {"HTTPPort", "txtHTTPPort", "16239", "16239"},
    {"SocketPort", "txtSocketPort", "16240", "16240"},
    {"Webaddress", "txtWebAddress", "127.0.0.1", "127.0.0.1"},
};

class ActivatingWithDamagedSettings : public Activating {};

TEST_F(ActivatingWithDamagedSettings, ReportsEachAndShowsTheOthersWhenItIsIgnored) {
  for (const auto& damaged : kSettingsOfControls) {
    SCOPED_TRACE(damaged.key);
    desktop.reports.clear();
    const Variant before = Stored("Settings", damaged.key);
    Damage(damaged.key);
    Answers({"IGNORE"});
    Show([&](frmMirelo& form) {
      for (const auto& setting : kSettingsOfControls) {
        const bool is_damaged = std::string(setting.key) == damaged.key;
        EXPECT_EQ(ValueOf(*form.Find(setting.control)), is_damaged ? setting.left : setting.value)
            << setting.control;
      }
      EXPECT_THAT(CallStack(), ElementsAre(kShowing));
    });
    EXPECT_THAT(ReportedErrors(), ElementsAre(ErrorNumber(0x80044284)));
    EXPECT_THAT(desktop.reports.at(0).text, HasSubstr("\tin Mirelo.frmMirelo.Form_Activate at line 0"));
    Save(damaged.key, damaged.value);
  }
}

TEST_F(ActivatingWithDamagedSettings, ReadsOneAgainUntilItCanBeRead) {
  for (const auto& damaged : kSettingsOfControls) {
    SCOPED_TRACE(damaged.key);
    desktop.reports.clear();
    Damage(damaged.key);
    Answers({"RETRY", "RETRY", "RETRY"});
    desktop.while_open = [&] {
      if (desktop.reports.size() == 3) Save(damaged.key, damaged.value);
    };
    Show([&](frmMirelo& form) {
      for (const auto& setting : kSettingsOfControls)
        EXPECT_EQ(ValueOf(*form.Find(setting.control)), setting.value) << setting.control;
      EXPECT_THAT(CallStack(), ElementsAre(kShowing));
    });
    EXPECT_THAT(desktop.reports, SizeIs(3));
  }
}

TEST_F(ActivatingWithDamagedSettings, FillsNothingBehindOneWhenItIsAborted) {
  for (const auto& damaged : kSettingsOfControls) {
    SCOPED_TRACE(damaged.key);
    Damage(damaged.key);
    Answers({"ABORT"});
    Show([&](frmMirelo& form) {
      bool behind = false;
      for (const auto& setting : kSettingsOfControls) {
        behind = behind || std::string(setting.key) == damaged.key;
        EXPECT_EQ(ValueOf(*form.Find(setting.control)), behind ? setting.left : setting.value)
            << setting.control;
      }
      EXPECT_THAT(CallStack(), IsEmpty()) << "the whole stack is cleared";
    });
    Save(damaged.key, damaged.value);
  }
}

TEST_F(ActivatingWithDamagedSettings, HasSwitchedWhatBelongsToTheSettingsBeforeOneThatIsAborted) {
  Save("UpdateEvery", 0);
  Damage("RowsLimit");
  Answers({"ABORT"});
  Show([](frmMirelo& form) {
    EXPECT_EQ(form.txtSec.Text(), "0");
    EXPECT_TRUE(form.txtSec.Enabled());
    EXPECT_FALSE(form.txtRows.Enabled()) << "no limit is ticked yet";
    EXPECT_FALSE(form.VScrollRows.Enabled());
    EXPECT_TRUE(form.chkLimitRows.Enabled());
  });
}

TEST_F(ActivatingWithDamagedSettings, KeepsTheVerticalBoxUnarmedWhenItsSettingIsAborted) {
  Damage("VerticalTable");
  Answers({"ABORT"});
  Show([](frmMirelo& form) { EXPECT_FALSE(form.VerticalClickArmed()); });
}

TEST_F(ActivatingWithDamagedSettings, TellsAFailureInsideAHandlerFromOneOfItsOwn) {
  Save("BuildCharts", 1);
  Save("ChartStyle", "None");
  Show([&](frmMirelo& form) {
    Damage("ChartStyle");
    Answers({"IGNORE"});
    form.ReloadOnActivate(false);
    form.chkChartStyle.Value(1);
  });
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text,
              AllOf(HasSubstr("\tin Mirelo.frmMirelo.chkChartStyle_Click at line 0"),
                    HasSubstr("Mirelo.frmMirelo.chkChartStyle_Click()\r\n"
                              "                    Mirelo.cMirelo.LoadFrmMirelo()")));
}

TEST_F(ActivatingWithDamagedSettings, RefusesTicksThatAreNone) {
  const struct {
    Variant stored;
    int error;
  } cases[] = {{2, 380}, {-1, 380}, {"yes", 13}, {"99999", 6}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.stored.ToText());
    desktop.reports.clear();
    Save("ColorPoints", c.stored);
    Answers({"IGNORE"});
    Show([](frmMirelo& form) {
      EXPECT_EQ(form.chkColorPoints.Value(), 0);
      EXPECT_EQ(form.chkGreyOut.Value(), 1);
    });
    EXPECT_THAT(ReportedErrors(), ElementsAre(c.error));
  }
}

// A registry that fails its first call

TEST_F(Activating, ReadsTheFirstSettingAgainWhenTheRegistryFailsTwice) {
  Answers({"RETRY", "RETRY"});
  Show([&](frmMirelo& form) {
    desktop.while_open = [&] {
      if (desktop.reports.size() == 1) registry.Raise("RegOpenKeyExA");
    };
    registry.Raise("RegOpenKeyExA");
    form.Activate();
    EXPECT_EQ(form.ComDisplayTimezone.Text(), "(ET) US Eastern");
    EXPECT_THAT(form.ComDisplayTimezone.Items(), SizeIs(17));
  });
  EXPECT_THAT(desktop.reports, SizeIs(2));
}

TEST_F(Activating, GoesOnWithTheNextSettingWhenTheFailureIsIgnored) {
  Answers({"IGNORE"});
  Show([&](frmMirelo& form) {
    Save("DisplayOffset", "1:30");
    registry.Raise("RegOpenKeyExA");
    form.Activate();
    EXPECT_EQ(form.ComDisplayTimezone.Text(), "");
    EXPECT_EQ(form.ComDisplayOffset.Text(), "1:30");
  });
}

TEST_F(Activating, LeavesOffWhereTheFailureIsAborted) {
  Answers({"ABORT"});
  Show([&](frmMirelo& form) {
    Save("DisplayOffset", "1:30");
    registry.Raise("RegOpenKeyExA");
    form.Activate();
    EXPECT_EQ(form.ComDisplayTimezone.Text(), "");
    EXPECT_EQ(form.ComDisplayOffset.Text(), "0:00");
  });
}

// Loading

TEST_F(Activating, ReloadsEvenWhenTheWindowsPlaceCannotBeRead) {
  Answers({"IGNORE"});
  registry.Raise("RegOpenKeyExA");
  Show([](frmMirelo& form) { EXPECT_TRUE(form.ReloadOnActivate()); });
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tin Mirelo.frmMirelo.Form_Load at line 0"));
}

TEST_F(Activating, FillsNothingWhenLoadingIsAborted) {
  Answers({"ABORT"});
  registry.Raise("RegOpenKeyExA");
  Show([](frmMirelo& form) {
    EXPECT_FALSE(form.ReloadOnActivate());
    EXPECT_THAT(form.ComDisplayTimezone.Items(), IsEmpty());
    EXPECT_EQ(form.txtSec.Text(), "");
  });
}

// Names

TEST_F(Activating, EntersEachRoutineUnderItsName) {
  const auto traces = Traces([&] {
    Show([](frmMirelo& form) {
      form.chkVerTable.UserClick();
      form.chkVerTable.UserClick();
      form.chkLimitRows.UserClick();
      form.chkLimitRows.UserClick();
      form.VScrollRows.UserStepUp();
      form.C1TTickersSettings.UserSelect(kSettings);
      form.chkStyleOrNot.UserClick();
      form.VScrollSec.UserStepUp();
      form.VScrollDecimalplaces.UserStepUp();
      form.txtVerticalSheet.UserEdit("Sheet");
      form.chkUpdOrNot.UserClick();
      form.C1TTickersSettings.UserSelect(kCharting);
      form.chkBuildCharts.UserClick();
      form.VScrollChartPoints.UserStepUp();
      form.chkChartStyle.UserClick();
      form.ButClose.UserPress();
      form.ButCancel.Click.Raise();
      form.Close();
    });
  });
  for (const char* name : {"Form_Load",
                           "Form_Activate",
                           "Form_Unload",
                           "LoadFG",
                           "ButClose_Click",
                           "ButCancel_Click",
                           "C1TTickersSettings_Click",
                           "chkBuildCharts_Click",
                           "chkChartStyle_Click",
                           "chkLimitRows_Click",
                           "chkStyleOrNot_Click",
                           "chkUpdOrNot_Click",
                           "chkVerTable_Click",
                           "txtChartPoints_Change",
                           "VScrollChartPoints_Change",
                           "txtDecimalPlaces_Change",
                           "VScrollDecimalplaces_Change",
                           "txtRows_Change",
                           "VScrollRows_Change",
                           "txtSec_Change",
                           "VScrollSec_Change",
                           "RemoveBadSymbols"}) {
    EXPECT_THAT(traces, Contains("Entered Mirelo.frmMirelo." + std::string(name)));
    EXPECT_THAT(traces, Contains("Exited Mirelo.frmMirelo." + std::string(name)));
  }
  EXPECT_EQ(traces.front(), "Entered Mirelo.cMirelo.LoadFrmMirelo");
  EXPECT_EQ(traces.back(), "Exited Mirelo.cMirelo.LoadFrmMirelo");
  EXPECT_THAT(traces, Not(Contains("Entered Mirelo.frmMirelo.txtVerticalSheet_Change")));
}

}  // namespace
}  // namespace mirelo::testing
