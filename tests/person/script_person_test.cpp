#include "person/script_person.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "automation/runtime_error.h"
#include "dialog/scripted_portfolios.h"
#include "forms/button.h"
#include "forms/form.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "support/facade_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class ScriptPersonTest : public FacadeTest {
 protected:
  ScriptPersonTest() {
    host.Use(person.desktop());
    facade->m_ObjExcelApplication(spreadsheet.Application());
    internet.answer = [this](const AnsweringInternet::Request& request) { return tracker(request); };
  }

  std::string Cell(const char* sheet, const char* address) {
    return spreadsheet.Application()
        ->ActiveWorkbook()
        ->Worksheets()
        ->Item(sheet)
        ->Range(address)
        ->Value()
        .ToText();
  }

  // What a report of a failure is to whoever stands in for a person.
  void ReportAFailure() {
    forms::Form report("frmErrorMessage", "Error");
    person.desktop().ShowModal(report);
  }

  ScriptPerson person;
  ScriptedPortfolios tracker;
  workbook::Spreadsheet spreadsheet = workbook::Spreadsheet::New();
};

std::string Refusal(ScriptPerson& person, const char* name, const char* value) {
  try {
    person.Wish(name, value);
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), 5);
    return error.Description();
  }
  return "";
}

TEST_F(ScriptPersonTest, FillsInTheDialogAsWishedAndPressesGo) {
  person.Wish("tickers", "msft, IBM");
  person.Wish("Columns", "Ticker, Last,Change");
  person.Wish("Seconds", "15");
  EXPECT_EQ(facade->LoadFrmMirelo(), 78);
  EXPECT_EQ(person.Told(), "");
  EXPECT_EQ(Cell("Dovanta2_Quotes", "A3"), "MSFT");
  EXPECT_EQ(Cell("Dovanta2_Quotes", "A4"), "IBM");
  EXPECT_EQ(Cell("Dovanta2_Quotes", "C2"), "Change");
  EXPECT_EQ(facade->Seconds(), 15);
}

TEST_F(ScriptPersonTest, AddsTheHistoryThatChartsShow) {
  person.Wish("Tickers", "MSFT");
  person.Wish("Columns", "Ticker,Last,Time");
  person.Wish("History", "Time");
  person.Wish("Charts", "1");
  EXPECT_EQ(facade->LoadFrmMirelo(), 78);
  const std::vector<std::string> fields{Cell("Quotes_Vertical(MSFT)", "A2"),
                                        Cell("Quotes_Vertical(MSFT)", "B2"),
                                        Cell("Quotes_Vertical(MSFT)", "C2")};
  EXPECT_THAT(fields, ElementsAre("Last", "Time", "LastVolume"));
}

TEST_F(ScriptPersonTest, CancelsADialogThatCannotBeFilledInSoAndSaysWhyOnce) {
  person.Wish("Tickers", "MSFT");
  person.Wish("Columns", "Ticker,Nonsense");
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
  EXPECT_THAT(person.Told(), HasSubstr("The dialog was cancelled: columns: there is no column \"Nonsense\""));
  EXPECT_EQ(person.Told(), "");
}

TEST_F(ScriptPersonTest, SaysWhichWishAnotherOneNeeds) {
  person.Wish("Tickers", "MSFT");
  person.Wish("UpdateEvery", "0");
  person.Wish("Seconds", "15");
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
  EXPECT_EQ(person.Told(),
            "The dialog was cancelled: Seconds: the dialog has switched this off; add the wish "
            "UpdateEvery=1\n");
}

TEST_F(ScriptPersonTest, RepeatsWhatWasWishedAsItWasWritten) {
  person.Wish("Tickers", "MSFT");
  person.Wish("Columns", "Ticker,--set A--B");
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
  EXPECT_THAT(person.Told(), HasSubstr("there is no column \"--set A--B\""));
}

TEST_F(ScriptPersonTest, IsNotHeldUpByWhatFailedBeforeTheDialog) {
  ReportAFailure();
  EXPECT_THAT(person.Told(), HasSubstr("form: Error"));
  person.Wish("Tickers", "MSFT");
  EXPECT_EQ(facade->LoadFrmMirelo(), 78);
  EXPECT_EQ(person.Told(), "");
}

TEST_F(ScriptPersonTest, FillsInALaterDialogAlthoughAnEarlierOneWasCancelled) {
  person.Wish("Tickers", "MSFT");
  person.Wish("Columns", "Ticker,Nonsense");
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
  person.Wish("Columns", "Ticker,Last");
  EXPECT_EQ(facade->LoadFrmMirelo(), 78);
}

TEST_F(ScriptPersonTest, TakesTheLastOfTwoWishesForOneSetting) {
  person.Wish("Tickers", "MSFT");
  person.Wish("Seconds", "15");
  person.Wish("seconds", "20");
  EXPECT_EQ(facade->LoadFrmMirelo(), 78);
  EXPECT_EQ(facade->Seconds(), 20);
}

TEST_F(ScriptPersonTest, DoesNotClearAHistoryUnlessThatIsAccepted) {
  person.Wish("Tickers", "MSFT");
  person.Wish("History", "Last");
  ASSERT_EQ(facade->LoadFrmMirelo(), 78);
  const auto history =
      spreadsheet.Application()->ActiveWorkbook()->Worksheets()->Item("Quotes_Vertical(MSFT)");
  history->Range("A3")->Value(4.65);
  person.Wish("History", "Bid,Last");
  person.Wish("Columns", "Ticker,Bid,Last");
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
  EXPECT_THAT(person.Told(), HasSubstr("Go was not pressed"));
  EXPECT_EQ(history->Range("A3")->Value().ToDouble(), 4.65);
  person.Wish("AcceptCosts", "1");
  EXPECT_EQ(facade->LoadFrmMirelo(), 78);
  EXPECT_THAT(person.Told(), HasSubstr("MSFT"));
}

TEST_F(ScriptPersonTest, RefusesWishesThatNoDialogCanFulfil) {
  EXPECT_THAT(Refusal(person, "Tickers", "MSFT,I(BM"), HasSubstr("\"I(BM\" is no ticker"));
  EXPECT_THAT(Refusal(person, "Colour", "red"), HasSubstr("\"Colour\""));
  EXPECT_THAT(Refusal(person, "Seconds", "word"), HasSubstr("0 to 3600"));
  EXPECT_THAT(Refusal(person, "History", "Nonsense"), HasSubstr("no field \"Nonsense\""));
}

TEST_F(ScriptPersonTest, TellsWhatBoxesSay) {
  person.desktop().MessageBox("Data retrieval error.", host::Desktop::kCritical, "Dovanta2");
  EXPECT_EQ(person.Told(), "error: Dovanta2: Data retrieval error.\n");
}

}  // namespace
}  // namespace mirelo::testing
