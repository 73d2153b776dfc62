#include "dialog/number_boxes_test.h"
#include "automation/runtime_error.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using forms::ScrollBar;
using forms::TextBox;

class NumberBoxes : public NumberBoxesTest {};

TEST_F(NumberBoxes, MoveTheBarToTheNumberThatIsTyped) {
  ShowEach([](frmMirelo&, const NumberBox&, TextBox& text, ScrollBar& bar) {
    text.UserEdit("7");
    EXPECT_EQ(text.Text(), "7");
    EXPECT_EQ(bar.Value(), 7);
    EXPECT_THAT(CallStack(), ElementsAre("Mirelo.cMirelo.LoadFrmMirelo"));
  });
}

TEST_F(NumberBoxes, ShowTheNumberOfTheirBar) {
  ShowEach([](frmMirelo&, const NumberBox& box, TextBox& text, ScrollBar& bar) {
    bar.UserStepUp();
    EXPECT_EQ(text.Text(), std::to_string(std::stoi(box.shown) + 1));
    bar.UserStepDown();
    bar.UserStepDown();
    EXPECT_EQ(text.Text(), std::to_string(std::stoi(box.shown) - 1));
    bar.UserDrag(5);
    EXPECT_EQ(text.Text(), "5");
    EXPECT_THAT(CallStack(), ElementsAre("Mirelo.cMirelo.LoadFrmMirelo"));
  });
}

TEST_F(NumberBoxes, EndWhereTheirBarEnds) {
  ShowEach([](frmMirelo&, const NumberBox& box, TextBox& text, ScrollBar& bar) {
    bar.UserDrag(100'000);
    EXPECT_EQ(text.Text(), std::to_string(box.highest));
    bar.UserStepUp();
    EXPECT_EQ(text.Text(), std::to_string(box.highest));
    bar.UserDrag(-5);
    EXPECT_EQ(text.Text(), "0");
    bar.UserStepDown();
    EXPECT_EQ(text.Text(), "0");
  });
}

TEST_F(NumberBoxes, HoldWhatIsTypedInsideTheRange) {
  ShowEach([](frmMirelo&, const NumberBox& box, TextBox& text, ScrollBar& bar) {
    const std::string highest = std::to_string(box.highest);
    const struct {
      std::string typed;
      std::string shown;
    } cases[] = {
        {"0", "0"},   {highest, highest}, {std::to_string(box.highest + 1), highest},     {"32767", highest},
        {"-1", "0"},  {"-32768", "0"},    {"1E3", box.highest < 1000 ? highest : "1000"}, {"  4 ", "4"},
        {"007", "7"}, {"9-", "0"}};
    for (const auto& c : cases) {
      SCOPED_TRACE(c.typed);
      bar.UserDrag(1);
      text.UserEdit(c.typed);
      EXPECT_EQ(text.Text(), c.shown);
      EXPECT_EQ(std::to_string(bar.Value()), c.shown);
    }
  });
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

// They fail where a 16-bit integer is made of them, and nothing holds them then.
TEST_F(NumberBoxes, LeaveNumbersBeyondSixteenBitsAsTheyAre) {
  ShowEach([](frmMirelo&, const NumberBox&, TextBox& text, ScrollBar& bar) {
    for (const char* number : {"32768", "-32769", "1E9"}) {
      SCOPED_TRACE(number);
      bar.UserDrag(4);
      text.UserEdit(number);
      EXPECT_EQ(text.Text(), number);
      EXPECT_EQ(bar.Value(), 4);
    }
  });
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(NumberBoxes, RoundADecimalEntryForTheBarOnly) {
  ShowEach([](frmMirelo&, const NumberBox&, TextBox& text, ScrollBar& bar) {
    const struct {
      const char* typed;
      std::int32_t value;
    } cases[] = {{"2.5", 2}, {"3.5", 4}, {"2.7", 3}, {"-0.4", 0}, {".5", 0}, {"4.2", 4}};
    for (const auto& c : cases) {
      SCOPED_TRACE(c.typed);
      for (const std::int32_t before : {0, 9}) {
        bar.UserDrag(before);
        text.UserEdit(c.typed);
        EXPECT_EQ(text.Text(), c.typed);
        EXPECT_EQ(bar.Value(), c.value);
      }
    }
  });
}

TEST_F(NumberBoxes, LeaveADecimalEntryWhenTheirBarMovesOn) {
  ShowEach([](frmMirelo&, const NumberBox&, TextBox& text, ScrollBar& bar) {
    text.UserEdit("2.5");
    bar.UserStepUp();
    EXPECT_EQ(text.Text(), "3");
    bar.UserStepDown();
    EXPECT_EQ(text.Text(), "2");
  });
}

TEST_F(NumberBoxes, AskForANumberAndKeepWhatIsTyped) {
  for (const char* typed : {"12abc", "", "-", "1 2 x", "3;4", "0x10", "$5", "."}) {
    SCOPED_TRACE(typed);
    ShowEach([&](frmMirelo& form, const NumberBox& box, TextBox& text, ScrollBar& bar) {
      desktop.boxes.clear();
      text.UserEdit(typed);
      EXPECT_THAT(desktop.boxes, ElementsAre(kNoDigit));
      EXPECT_EQ(text.Text(), typed);
      EXPECT_EQ(std::to_string(bar.Value()), box.shown);
      EXPECT_EQ(form.ActiveControl(), &text);
      EXPECT_THAT(CallStack(), ElementsAre("Mirelo.cMirelo.LoadFrmMirelo",
                                           "Mirelo.frmMirelo." + std::string(box.name) + "_Change"))
          << "this way out leaves the name there";
    });
  }
}

TEST_F(NumberBoxes, GiveTheBoxTheFocusWithTheMessage) {
  ShowEach([](frmMirelo& form, const NumberBox&, TextBox& text, ScrollBar&) {
    form.ButGo.SetFocus();
    text.Text("none");
    EXPECT_TRUE(text.HasFocus());
  });
}

TEST_F(NumberBoxes, AskOnceForEachChangeThatIsNoNumber) {
  ShowEach([&](frmMirelo&, const NumberBox&, TextBox& text, ScrollBar& bar) {
    desktop.boxes.clear();
    text.UserEdit("");
    text.UserType("1a2");
    EXPECT_THAT(desktop.boxes, SizeIs(3));  // "", "1a" and "1a2"
    EXPECT_EQ(bar.Value(), 1);
    text.UserEdit("3");
    EXPECT_EQ(bar.Value(), 3);
  });
}

// Decimal places

TEST_F(NumberBoxes, ShowASampleWithTheDecimalPlaces) {
  const struct {
    const char* places;
    const char* sample;
  } cases[] = {{"0", "2"},           {"1", "2.1"},           {"2", "2.12"},          {"3", "2.123"},
               {"9", "2.123456789"}, {"10", "2.1234567890"}, {"11", "2.1234567890"}, {"-3", "2"},
               {"2.5", "2.12"}};
  Show([&](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kSettings);
    for (const auto& c : cases) {
      SCOPED_TRACE(c.places);
      form.txtDecimalPlaces.UserEdit(c.places);
      EXPECT_EQ(form.lblExample.Caption(), c.sample);
    }
    form.VScrollDecimalplaces.UserDrag(4);
    EXPECT_EQ(form.lblExample.Caption(), "2.1234");
  });
}

TEST_F(NumberBoxes, HoldElevenDecimalPlacesAtTen) {
  Show([](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kSettings);
    form.txtDecimalPlaces.UserEdit("11");
    EXPECT_EQ(form.txtDecimalPlaces.Text(), "10");
  });
}

TEST_F(NumberBoxes, RefreshTheSettingsWithTheSample) {
  Show([](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kSettings);
    std::vector<std::string> samples;
    form.C1ElaSettings.Appearance.Subscribe([&] { samples.push_back(form.lblExample.Caption()); });
    form.txtDecimalPlaces.UserEdit("3");
    EXPECT_THAT(samples, ::testing::Contains("2.123"));
    EXPECT_EQ(samples.back(), "2.123");
  });
}

TEST_F(NumberBoxes, LeaveTheSampleWithTheMessage) {
  Show([](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kSettings);
    form.txtDecimalPlaces.UserEdit("x");
    EXPECT_EQ(form.lblExample.Caption(), "2.12");
  });
}

// Seconds

TEST_F(NumberBoxes, OfferTheQuoteSourcesAtZeroSeconds) {
  const struct {
    const char* seconds;
    bool offered;
  } cases[] = {{"0", true},   {"1", false},    {"-5", true}, {"0.4", false},
               {"0.0", true}, {"3600", false}, {"00", true}};
  Show([&](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kSettings);
    for (const auto& c : cases) {
      SCOPED_TRACE(c.seconds);
      form.txtSec.UserEdit("60");
      form.txtSec.UserEdit(c.seconds);
      EXPECT_EQ(form.ComQuoteSource.Enabled(), c.offered);
      EXPECT_EQ(form.ButUpDate.Enabled(), c.offered);
    }
    form.VScrollSec.UserDrag(0);
    EXPECT_TRUE(form.ButUpDate.Enabled());
    form.VScrollSec.UserStepUp();
    EXPECT_FALSE(form.ButUpDate.Enabled());
  });
}

TEST_F(NumberBoxes, FillTheQuoteSourcesWhenThereAreNone) {
  mGlobal::AppSettings().SaveSetting("Settings\\QuoteSource\\List", "False", "FALSE.SDF");
  mGlobal::AppSettings().SaveSetting("Settings\\QuoteSource\\List", "Other", "OTHER.SDF");
  Show([](frmMirelo& form) {
    form.ComQuoteSource.Clear();
    form.C1TTickersSettings.UserSelect(kSettings);
    form.txtSec.UserEdit("0");
    EXPECT_THAT(form.ComQuoteSource.Items(), ElementsAre("False", "Other"));
    EXPECT_EQ(form.ComQuoteSource.Text(), "False") << "the selection asked for is the word";
  });
}

TEST_F(NumberBoxes, KeepTheQuoteSourcesThatAreThere) {
  Show([](frmMirelo& form) {
    form.ComQuoteSource.Clear();
    form.ComQuoteSource.AddItem("Mine");
    form.ComQuoteSource.Text("Mine");
    form.C1TTickersSettings.UserSelect(kSettings);
    form.txtSec.UserEdit("0");
    EXPECT_THAT(form.ComQuoteSource.Items(), ElementsAre("Mine"));
    EXPECT_EQ(form.ComQuoteSource.Text(), "Mine");
  });
}

TEST_F(NumberBoxes, LeaveTheQuoteSourcesWithTheMessage) {
  Show([](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kSettings);
    form.txtSec.UserEdit("x");
    EXPECT_FALSE(form.ButUpDate.Enabled());
  });
}

// Behind the message nothing is reported.
TEST_F(NumberBoxes, IgnoreWhatFailsBehindTheNumber) {
  ShowEach([](frmMirelo&, const NumberBox&, TextBox& text, ScrollBar& bar) {
    const auto cookie = bar.Appearance.Subscribe([] { throw Errors::OutOfMemory(); });
    text.UserEdit("7");
    bar.Appearance.Unsubscribe(cookie);
    EXPECT_EQ(text.Text(), "7");
    EXPECT_THAT(CallStack(), ElementsAre("Mirelo.cMirelo.LoadFrmMirelo"));
  });
}

TEST_F(NumberBoxes, IgnoreWhatFailsWhenTheirBarMoves) {
  ShowEach([](frmMirelo&, const NumberBox& box, TextBox& text, ScrollBar& bar) {
    const auto cookie = text.Appearance.Subscribe([] { throw Errors::OutOfMemory(); });
    bar.UserStepUp();
    text.Appearance.Unsubscribe(cookie);
    EXPECT_EQ(bar.Value(), std::stoi(box.shown) + 1);
    EXPECT_THAT(CallStack(), ElementsAre("Mirelo.cMirelo.LoadFrmMirelo"));
  });
}

// In front of it everything is: a box that cannot take the focus.
TEST_F(NumberBoxes, ReportABoxThatCannotTakeTheFocus) {
  for (const NumberBox& box : kNumberBoxes) {
    SCOPED_TRACE(box.name);
    desktop.reports.clear();
    Answers({"RETRY", "IGNORE"});
    Show([&](frmMirelo& form) {
      form.ReloadOnActivate(false);
      (form.*box.text).Enabled(false);
      (form.*box.text).Text("x");
    });
    EXPECT_THAT(ReportedErrors(), ElementsAre(5, 5));
    EXPECT_THAT(desktop.reports.at(0).text,
                ::testing::HasSubstr("\tin Mirelo.frmMirelo." + std::string(box.name) + "_Change at line 0"));
  }
  EXPECT_THAT(desktop.boxes, SizeIs(4)) << "the message is not repeated";
}

}  // namespace
}  // namespace mirelo::testing
