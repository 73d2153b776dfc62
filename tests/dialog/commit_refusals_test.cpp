#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "dialog/commit_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const ScriptedDesktop::Box kNotNumeric{"'Number of chart points' must be numeric.", 16, "Dovanta2"};
const ScriptedDesktop::Box kOutOfBounds{"'Number of chart points' must be between 5 and 1200.", 16,
                                        "Dovanta2"};
const ScriptedDesktop::Box kSourceEmpty{"Please fill in the 'Quote Source' field ", 16, "Dovanta2"};

class Refusing : public CommitTest {
 protected:
  Refusing() { Save("VerticalTable", 0); }

  // The present width of the one column, and nothing else, is what a refused Go has stored.
  static Write Width(const char* value) {
    return {"Settings\\WidthField", "Ticker", host::Registry::kDword, value};
  }
  // Go after these acts is refused with this message, on this tab and control.
  void ExpectRefusal(const Acts& acts, const ScriptedDesktop::Box& box, std::int32_t tab,
                     const char* control) {
    log.writes.clear();
    internet.requests.clear();
    EXPECT_EQ(Go(
                  [&](frmMirelo& form) {
                    form.FG.UserResizeColumn(0, 2345);
                    acts(form);
                  },
                  [&](frmMirelo& form) {
                    EXPECT_TRUE(form.Visible());
                    EXPECT_EQ(form.Tag(), "");
                    EXPECT_EQ(form.C1TTickersSettings.CurrTab(), tab);
                    EXPECT_TRUE(form.Find(control)->HasFocus());
                    EXPECT_THAT(desktop.boxes, ElementsAre(box));
                    EXPECT_THAT(log.writes, ElementsAre(Width("2345")));
                  }),
              2);
    EXPECT_THAT(internet.requests, IsEmpty());
  }
  Acts Points(const char* text) {
    return OnCharting([this, text](frmMirelo& form) { Hold(form.txtChartPoints, text); });
  }
};

TEST_F(Refusing, ChartPointsThatAreNoNumber) {
  for (const char* points : {"letters", "", "12abc", "1 2"}) {
    SCOPED_TRACE(points);
    ExpectRefusal(Points(points), kNotNumeric, kCharting, "txtChartPoints");
  }
}

TEST_F(Refusing, ChartPointsOutOfBounds) {
  for (const char* points : {"4.99", "1200.01", "4", "1201", "0", "-20", "40000"}) {
    SCOPED_TRACE(points);
    ExpectRefusal(Points(points), kOutOfBounds, kCharting, "txtChartPoints");
  }
}

TEST_F(Refusing, ChartPointsThatAPersonCanType) {
  for (const char* points : {"4", "4.99"}) {
    SCOPED_TRACE(points);
    ExpectRefusal(OnCharting([&](frmMirelo& form) { form.txtChartPoints.UserEdit(points); }), kOutOfBounds,
                  kCharting, "txtChartPoints");
  }
}

TEST_F(Refusing, NotTheBoundsThemselves) {
  for (const char* points : {"5", "1200", "5.0", "1199.99"}) {
    SCOPED_TRACE(points);
    EXPECT_EQ(Go(Points(points)), 78);
    EXPECT_EQ(Stored("Settings", "ChartPoints").ToText(), points);
    EXPECT_THAT(desktop.boxes, IsEmpty());
    Save("ChartPoints", "20");
  }
}

TEST_F(Refusing, DecimalPlacesThatAreNoNumberInTheWordsOfChartPoints) {
  for (const char* places : {"letters", "", "2x"}) {
    SCOPED_TRACE(places);
    ExpectRefusal(OnSettings([&](frmMirelo& form) { form.txtDecimalPlaces.UserEdit(places); }), kNotNumeric,
                  kCharting, "txtDecimalPlaces");
  }
}

TEST_F(Refusing, AnEmptyQuoteSourceWhileOneCanBeChosen) {
  ExpectRefusal(OnSettings([](frmMirelo& form) {
                  form.txtSec.UserEdit("0");
                  form.ComQuoteSource.UserEdit("");
                }),
                kSourceEmpty, kSettings, "ComQuoteSource");
}

TEST_F(Refusing, NamesTheFieldByTheTagOfItsBox) {
  ExpectRefusal(OnSettings([](frmMirelo& form) {
                  form.txtSec.UserEdit("0");
                  form.ComQuoteSource.UserEdit("");
                  form.ComQuoteSource.Tag("Source of Quotes");
                }),
                {"Please fill in the 'Source of Quotes' field ", 16, "Dovanta2"}, kSettings,
                "ComQuoteSource");
}

TEST_F(Refusing, NotAnEmptyQuoteSourceThatCannotBeChosen) {
  EXPECT_EQ(Go(OnSettings([](frmMirelo& form) {
              form.txtSec.UserEdit("0");
              form.ComQuoteSource.UserEdit("");
              form.txtSec.UserEdit("15");
              EXPECT_FALSE(form.ComQuoteSource.Enabled());
              EXPECT_EQ(form.ComQuoteSource.Text(), "");
            })),
            78);
}

TEST_F(Refusing, TheFirstOfSeveralFaults) {
  const auto faults = [this](frmMirelo& form, const char* points, const char* places) {
    OnSettings([&](frmMirelo& form) {
      form.txtSec.UserEdit("0");
      form.ComQuoteSource.UserEdit("");
      form.txtDecimalPlaces.UserEdit(places);
      form.txtHTTPPort.UserEdit("80a");
    })(form);
    Points(points)(form);
  };
  ExpectRefusal([&](frmMirelo& form) { faults(form, "letters", "letters"); }, kNotNumeric, kCharting,
                "txtChartPoints");
  ExpectRefusal([&](frmMirelo& form) { faults(form, "4", "letters"); }, kOutOfBounds, kCharting,
                "txtChartPoints");
  ExpectRefusal([&](frmMirelo& form) { faults(form, "5", "letters"); }, kNotNumeric, kCharting,
                "txtDecimalPlaces");
  ExpectRefusal([&](frmMirelo& form) { faults(form, "5", "2"); }, kSourceEmpty, kSettings, "ComQuoteSource");
}

TEST_F(Refusing, APortThatIsNoNumberInTheWordsOfThePortfolio) {
  ExpectRefusal(OnSettings([](frmMirelo& form) { form.txtHTTPPort.UserEdit("80a"); }),
                {"The value must be a digit.", 16, "Dovanta2"}, kTickers, "txtHTTPPort");
}

TEST_F(Refusing, WhatQuoteTrackerDoesNotAnswerFor) {
  const ScriptedDesktop::Box run{"Please run QuoteTracker.", 64, "Dovanta2"};
  const ScriptedDesktop::Box adjust{
      "Please adjust Dovanta HTTP Port parameter in accordance with the same parameter in QouteTracker -> "
      "Preferences.",
      64, "Dovanta2"};
  struct Case {
    std::optional<std::string> names;
    std::vector<ScriptedDesktop::Box> boxes;
  };
  for (const Case& c : {Case{std::nullopt, {run}}, Case{"<html>", {adjust}}, Case{"OK\r\n\r\n", {}}}) {
    SCOPED_TRACE(c.names.value_or("no answer"));
    tracker.names = c.names;
    EXPECT_EQ(Go([](frmMirelo&) {},
                 [&](frmMirelo& form) {
                   EXPECT_TRUE(form.Visible());
                   EXPECT_EQ(desktop.boxes, c.boxes);
                   EXPECT_THAT(log.writes, ElementsAre(Width("1700")));
                 }),
              2);
  }
}

TEST_F(Refusing, LeavesTheDialogAsThePersonLeftIt) {
  Go(OnSettings([](frmMirelo& form) {
       form.txtWebAddress.UserEdit("typed.example");
       form.txtDecimalPlaces.UserEdit("letters");
     }),
     [](frmMirelo& form) {
       EXPECT_EQ(form.txtWebAddress.Text(), "typed.example");
       EXPECT_EQ(form.txtDecimalPlaces.Text(), "letters");
       EXPECT_EQ(form.FG.Rows(), 2);
     });
}

TEST_F(Refusing, LeavesItsNameOnTheCallStack) {
  const auto acts = OnCharting([](frmMirelo& form) { form.txtChartPoints.UserEdit("4"); });
  Go(acts, [](frmMirelo&) {
    EXPECT_THAT(CallStack(), ElementsAre("Mirelo.cMirelo.LoadFrmMirelo", "Mirelo.frmMirelo.ButGo_Click"))
        << "the click pops a name, which is the inner one's";
  });
}

TEST_F(Refusing, CanBeFollowedByAGoodGo) {
  EXPECT_EQ(Go(Points("4"),
               [](frmMirelo& form) {
                 form.txtChartPoints.UserEdit("30");
                 form.ButGo.UserPress();
                 EXPECT_FALSE(form.Visible());
               }),
            78);
  EXPECT_EQ(Stored("Settings", "ChartPoints").ToText(), "30");
}

// A box that is switched off cannot take the focus.
TEST_F(Refusing, ReportsABoxThatCannotTakeTheFocus) {
  Save("ChartPoints", "3");
  Answers({"IGNORE"});
  EXPECT_EQ(Go([](frmMirelo& form) { EXPECT_FALSE(form.txtChartPoints.Enabled()); },
               [&](frmMirelo& form) {
                 EXPECT_THAT(desktop.boxes, ElementsAre(kOutOfBounds));
                 EXPECT_EQ(form.C1TTickersSettings.CurrTab(), 0) << "the return from the report fills anew";
               }),
            2);
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("Error: 5, "));
  EXPECT_THAT(desktop.reports[0].text,
              HasSubstr("\tin Mirelo.frmMirelo.save_settings_and_create_table at line 0"));
}

// Failures in front of the settings, at the width of the one column.
class FailingWidths : public CommitTest {
 protected:
  FailingWidths() {
    Save("VerticalTable", 0);
    tracker.on_request = [this](const std::string&) { ++asked; };
  }
  std::int32_t GoWith(const char* answer) {
    return Go([&](frmMirelo& form) {
      form.ReloadOnActivate(false);  // the return from the report shall not fill the dialog anew
      registry.Fail("RegSetValueExA");
      Answers({answer});
    });
  }
  bool HasStoredSettings() const { return !Stored("Settings", "Seconds").IsEmpty(); }

  int asked = 0;
};

TEST_F(FailingWidths, AreWrittenAtTheSecondTry) {
  EXPECT_EQ(GoWith("RETRY"), 78);
  EXPECT_EQ(StoredWidth("Ticker").ToInt32(), 1700);
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("(Failed saving the application setting)"));
  EXPECT_THAT(desktop.reports[0].text,
              HasSubstr("\tin Mirelo.frmMirelo.save_settings_and_create_table at line 0"));
}

TEST_F(FailingWidths, AreSkippedWhenThatIsIgnored) {
  EXPECT_EQ(GoWith("IGNORE"), 78);
  EXPECT_TRUE(StoredWidth("Ticker").IsEmpty());
  EXPECT_TRUE(HasStoredSettings());
}

TEST_F(FailingWidths, EndTheCommitWhenItIsAborted) {
  EXPECT_EQ(GoWith("ABORT"), 2);
  EXPECT_EQ(asked, 0);
  EXPECT_FALSE(HasStoredSettings());
}

}  // namespace
}  // namespace mirelo::testing
