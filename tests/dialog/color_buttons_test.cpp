#include <gmock/gmock.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "automation/runtime_error.h"
#include "dialog/color_test.h"
#include "dialog/frmMirelo.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t kSettingsTab = 1;
constexpr auto kSystemWindow = static_cast<std::int32_t>(0x80000005);

// One of the two buttons, with what it stands for.
struct Case {
  const char* routine;
  forms::Button frmMirelo::*button;
  forms::TextBox frmMirelo::*swatch;
  const char* key;
  const char* default_tag;
  const char* caption;
};

constexpr Case kCases[] = {{"Mirelo.frmMirelo.ButOn_Click", &frmMirelo::ButOn, &frmMirelo::txtOn,
                            "FillColorON", "32768", "Fill Color (On)"},
                           {"Mirelo.frmMirelo.ButOff_Click", &frmMirelo::ButOff, &frmMirelo::txtOff,
                            "FillColorOFF", "255", "Fill Color (Off)"}};

class ColorButtons : public ColorTest {
 protected:
  ColorButtons() {
    form.frmAppSettings(&mGlobal::AppSettings());
    form.Owner(&*facade);
    form.C1TTickersSettings.CurrTab(kSettingsTab);
  }

  // Presses the button; the person does this with the palette, which must come up.
  void Press(const Case& c, std::function<void(frmColor&)> act) {
    const auto shown_before = desktop.forms.size();
    PressInVain(c, std::move(act));
    EXPECT_EQ(desktop.forms.size(), shown_before + 1);
  }
  // The same where no palette may come up.
  void PressInVain(const Case& c, std::function<void(frmColor&)> act) {
    desktop.person["frmColor"] = [act = std::move(act)](forms::Form& shown) {
      act(dynamic_cast<frmColor&>(shown));
    };
    (form.*c.button).UserPress();
  }
  static std::function<void(frmColor&)> Picking(std::size_t cell) {
    return [cell](frmColor& palette) { palette.L1[cell]->UserClick(); };
  }
  static Variant Stored(const Case& c) {
    return mGlobal::AppSettings().GetSetting("Settings", c.key, "absent");
  }
  forms::Color Swatch(const Case& c) const { return (form.*c.swatch).BackColor(); }

  frmMirelo form;
};

TEST_F(ColorButtons, OpenThePaletteWithTheirCaptionAndTheSettingsStore) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    Press(c, [&](frmColor& palette) {
      EXPECT_EQ(palette.Caption(), c.caption);
      EXPECT_EQ(palette.frmAppSettings(), &mGlobal::AppSettings());
    });
    Press(c, [&](frmColor& palette) { EXPECT_EQ(palette.Caption(), c.caption) << "a fresh one each time"; });
  }
  EXPECT_THAT(desktop.forms, ElementsAre("frmColor", "frmColor", "frmColor", "frmColor"));
}

TEST_F(ColorButtons, ShowTheDefaultColorAsThePresentOneOnAFreshSystem) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    Press(c, [&](frmColor& palette) { EXPECT_EQ(palette.Tag(), c.default_tag); });
  }
}

TEST_F(ColorButtons, ShowTheStoredColorAsThePresentOne) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    Save(c.key, "65535");
    Press(c, [&](frmColor& palette) {
      EXPECT_EQ(palette.Tag(), "65535");
      EXPECT_EQ(palette.L1[14]->BorderStyle(), 1);
    });
    Save(c.key, 10079487);
    Press(c, [&](frmColor& palette) { EXPECT_EQ(palette.Tag(), "10079487"); });
    Save(c.key, "-4142");
    Press(c, [&](frmColor& palette) { EXPECT_EQ(palette.L1[0]->BorderStyle(), 1); });
  }
}

TEST_F(ColorButtons, ShowThePickInTheirSwatchAndStoreItAsText) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    Press(c, Picking(27));
    EXPECT_EQ(Swatch(c), 16711680);
    EXPECT_TRUE(Stored(c).IsText());
    EXPECT_EQ(Stored(c), Variant("16711680"));
  }
}

TEST_F(ColorButtons, LeaveTheOtherColorAlone) {
  Press(kCases[0], Picking(27));
  EXPECT_EQ(Stored(kCases[1]), Variant("absent"));
  EXPECT_EQ(Swatch(kCases[1]), forms::kWindowBackground);
  Press(kCases[1], Picking(3));
  EXPECT_EQ(Stored(kCases[0]), Variant("16711680"));
  EXPECT_EQ(Swatch(kCases[0]), 16711680);
}

TEST_F(ColorButtons, TakeBlackForAPickLikeAnyOther) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    Press(c, Picking(1));
    EXPECT_EQ(Swatch(c), 0);
    EXPECT_EQ(Stored(c), Variant("0"));
    EXPECT_TRUE(Stored(c).IsText());
  }
}

TEST_F(ColorButtons, StoreNoFillAndShowTheWindowColorForIt) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    Press(c, Picking(3));
    Press(c, Picking(0));
    EXPECT_EQ(Swatch(c), kSystemWindow);
    EXPECT_EQ(Stored(c), Variant("-4142"));
  }
}

TEST_F(ColorButtons, ChangeNothingWhenThePaletteIsClosedOrCanceled) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    Press(c, [](frmColor& palette) { palette.Close(); });
    Press(c, [](frmColor& palette) { palette.cmdEsc_Click(); });
    EXPECT_EQ(Swatch(c), forms::kWindowBackground);
    EXPECT_EQ(Stored(c), Variant("absent"));
  }
  EXPECT_EQ(registry.Calls("RegSetValueExA"), 0);
}

TEST_F(ColorButtons, StoreThePickBeforeTheDialogEndsAndCancelDoesNotTakeItBack) {
  desktop.person["frmMirelo"] = [&](forms::Form&) {
    form.C1TTickersSettings.CurrTab(kSettingsTab);
    Press(kCases[0], Picking(27));
    EXPECT_EQ(Stored(kCases[0]), Variant("16711680"));
    form.ButCancel.UserPress();
  };
  desktop.ShowModal(form);
  EXPECT_EQ(Stored(kCases[0]), Variant("16711680"));
}

TEST_F(ColorButtons, KeepTheDialogFromReloadingWhenThePaletteGoes) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    desktop.person["frmMirelo"] = [&](forms::Form&) {
      form.ReloadOnActivate(true);
      form.C1TTickersSettings.CurrTab(kSettingsTab);
      form.txtWebAddress.UserEdit("10.0.0.1");
      Press(c, [](frmColor& palette) { palette.Close(); });
      EXPECT_FALSE(form.ReloadOnActivate());
      EXPECT_EQ(form.txtWebAddress.Text(), "10.0.0.1");
      EXPECT_EQ(form.C1TTickersSettings.CurrTab(), kSettingsTab);
    };
    desktop.ShowModal(form);
  }
}

TEST_F(ColorButtons, EnterAndLeaveTheirRoutinesByName) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    const auto traces = Traces([&] { Press(c, Picking(27)); });
    const std::string name = c.routine;
    ASSERT_EQ(traces.size(), 12U);
    EXPECT_EQ(traces[0], "Entered " + name);
    EXPECT_EQ(traces[1], "Entered Mirelo.frmColor.Form_Load");
    EXPECT_EQ(traces[9], "Entered Mirelo.frmMirelo.backColorTxtFillColor");
    EXPECT_EQ(traces[10], "Exited Mirelo.frmMirelo.backColorTxtFillColor");
    EXPECT_EQ(traces[11], "Exited " + name);
  }
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(ColorButtons, ReadTheStoredColorAgainOnRetry) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    desktop.reports.clear();
    Save(c.key, "65535");
    Answers({"RETRY"});
    registry.Raise("RegOpenKeyExA");
    Press(c, [](frmColor& palette) { EXPECT_EQ(palette.Tag(), "65535"); });
    EXPECT_THAT(ReportedRoutines(), ElementsAre(c.routine));
  }
}

TEST_F(ColorButtons, OpenThePaletteWithoutAColorWhenReadingItIsIgnored) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    Answers({"IGNORE"});
    registry.Raise("RegOpenKeyExA");
    Press(c, [&](frmColor& palette) {
      EXPECT_EQ(palette.Tag(), "");
      EXPECT_EQ(palette.Caption(), c.caption);
      palette.L1[27]->UserClick();
    });
    EXPECT_EQ(Stored(c), Variant("16711680"));
  }
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(ColorButtons, OpenNoPaletteWhenReadingTheColorIsAborted) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    Answers({"ABORT"});
    registry.Raise("RegOpenKeyExA");
    PressInVain(c, Picking(27));
    EXPECT_EQ(Stored(c), Variant("absent"));
    EXPECT_FALSE(form.ReloadOnActivate());
  }
  EXPECT_THAT(desktop.forms, IsEmpty());
}

TEST_F(ColorButtons, StoreThePickAgainOnRetryWithoutAskingForItAnew) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    desktop.forms.clear();
    desktop.reports.clear();
    Answers({"RETRY", "RETRY"});
    registry.FailAlways("RegSetValueExA");
    desktop.while_open = [&] {
      if (desktop.reports.size() == 2) registry.Fail("RegSetValueExA", 100);
    };
    Press(c, Picking(27));
    EXPECT_THAT(ReportedErrors(), ElementsAre(ErrorNumber(0x80044281), ErrorNumber(0x80044281)));
    EXPECT_THAT(ReportedRoutines(), ElementsAre(c.routine, c.routine));
    EXPECT_EQ(Stored(c), Variant("16711680"));
    EXPECT_THAT(desktop.forms, ElementsAre("frmColor"));
  }
}

TEST_F(ColorButtons, ShowAPickThatIsNotStoredWhenStoringItIsIgnored) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    Answers({"IGNORE"});
    registry.Fail("RegSetValueExA");
    Press(c, Picking(27));
    EXPECT_EQ(Swatch(c), 16711680);
    EXPECT_EQ(Stored(c), Variant("absent"));
    EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty()) << "popped at its normal end";
  }
}

TEST_F(ColorButtons, WorkAgainAfterAnAbort) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    Answers({"ABORT"});
    registry.Fail("RegSetValueExA");
    Press(c, Picking(27));
    EXPECT_EQ(Stored(c), Variant("absent"));
    Press(c, Picking(3));
    EXPECT_EQ(Stored(c), Variant("255"));
  }
}

TEST_F(ColorButtons, StoreThePickAlthoughShowingItIsAborted) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.routine);
    desktop.reports.clear();
    Answers({"ABORT"});
    (form.*c.swatch).Appearance.Subscribe([] { throw Errors::OutOfMemory(); });
    Press(c, Picking(27));
    EXPECT_THAT(ReportedRoutines(), ElementsAre("Mirelo.frmMirelo.backColorTxtFillColor"));
    EXPECT_EQ(Stored(c), Variant("16711680"));
  }
}

// A pick comes from the palette as a rule; whoever shows it may have put a text there.
TEST_F(ColorButtons, TakeTheNumberThatAnAnswerStartsWith) {
  const struct {
    const char* tag;
    forms::Color color;
  } kRows[] = {
      {"255 red", 255}, {"red", 0}, {"&HFF", 255}, {" 12 34", 1234}, {"-2147483633", forms::kFaceBackground}};
  for (const auto& [tag, color] : kRows) {
    SCOPED_TRACE(tag);
    Press(kCases[0], [&, text = tag](frmColor& palette) {
      palette.Tag(text);
      palette.Hide();
    });
    EXPECT_EQ(Swatch(kCases[0]), color);
    EXPECT_EQ(Stored(kCases[0]), Variant(tag));
  }
}

TEST_F(ColorButtons, ReportAColorThatIsTooLarge) {
  Answers({"IGNORE"});
  Press(kCases[0], [](frmColor& palette) {
    palette.Tag("99999999999");
    palette.Hide();
  });
  EXPECT_THAT(ReportedErrors(), ElementsAre(6));
  EXPECT_THAT(ReportedRoutines(), ElementsAre("Mirelo.frmMirelo.ButOn_Click"));
}

TEST_F(ColorButtons, ReportAMissingStore) {
  form.frmAppSettings(nullptr);
  Answers({"ABORT"});
  PressInVain(kCases[0], Picking(27));
  EXPECT_THAT(ReportedErrors(), ElementsAre(91));
  EXPECT_THAT(desktop.forms, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
