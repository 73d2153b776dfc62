// What somebody does in the settings dialog for mirelo go, as the dialog stands when Go is pressed.

#include "person/dialog_person.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "core/settings_catalogue.h"
#include "dialog/frmMirelo.h"
#include "dialog/grid_columns.h"
#include "dialog/scripted_portfolios.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "person/attended_desktop.h"
#include "person/dialog_controls.h"
#include "support/facade_test.h"
#include "terminal/output.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Texts = std::vector<std::string>;

class Person : public FacadeTest {
 protected:
  Person() {
    host.Use(terminal);
    facade->m_ObjExcelApplication(spreadsheet.Application());
    wishes.tickers = {"MSFT", "IBM"};
    // The dialog is still open while Go asks QuoteTracker.
    tracker.on_request = [this](const std::string& resource) {
      if (resource == "/req?EnumPorts()") Look(dynamic_cast<frmMirelo&>(*forms::ActiveForm()));
    };
    internet.answer = [this](const AnsweringInternet::Request& request) { return tracker(request); };
  }

  std::int32_t Go() {
    DialogPerson person(wishes, terminal);
    const std::int32_t result = facade->LoadFrmMirelo();
    complaint = person.Complained() ? person.Complained()->text : "";
    return result;
  }
  void ExpectComplaint(const std::string& text) {
    EXPECT_EQ(Go(), 2);
    EXPECT_THAT(complaint, HasSubstr(text));
    EXPECT_THAT(internet.requests, IsEmpty()) << "Go was not pressed";
  }

  // A quote table with these headers and tickers on the sheet.
  void Table(const Texts& headers, const Texts& tickers) {
    const auto sheets = spreadsheet.Application()->ActiveWorkbook()->Worksheets();
    const auto sheet = sheets->Add();
    sheet->Name("Dovanta2_Quotes");
    sheet->Range("A1")->Value("SnapShot( 30 sec)");
    for (std::size_t i = 0; i < headers.size(); ++i) {
      sheet->Cells(2, static_cast<std::int32_t>(i + 1))->Value(headers[i]);
    }
    for (std::size_t i = 0; i < tickers.size(); ++i) {
      sheet->Cells(static_cast<std::int32_t>(i + 3), 1)->Value(tickers[i]);
    }
  }

  terminal::TextOutput printed;
  AttendedDesktop terminal{printed};
  ScriptedPortfolios tracker;
  workbook::Spreadsheet spreadsheet = workbook::Spreadsheet::New();
  DialogWishes wishes;
  std::string complaint;

  // The dialog when Go was pressed.
  Texts columns, tickers, headers;
  std::vector<Texts> ticked;  // fields of each ticker

 private:
  void Look(frmMirelo& form) {
    columns = form.ListRight.Items();
    const std::int32_t ticker_column = form.chkVerTable.Value();
    headers.clear();
    for (std::int32_t col = 0; col < form.FG.Cols(); ++col) headers.push_back(form.FG.TextMatrix(0, col));
    tickers.clear();
    ticked.clear();
    for (std::int32_t row = 1; row < form.FG.Rows(); ++row) {
      tickers.push_back(form.FG.TextMatrix(row, ticker_column));
      ticked.emplace_back();
      for (std::int32_t col = kFirstField; col < form.FG.Cols(); ++col) {
        if (form.FG.TextMatrix(row, col) == kTicked) ticked.back().push_back(form.FG.TextMatrix(0, col));
      }
    }
  }
};

TEST_F(Person, AddsTheTickersInCapitalsAndPressesGo) {
  wishes.tickers = {"msft", "IBM", "Ge"};
  EXPECT_EQ(Go(), 78);
  EXPECT_EQ(complaint, "");
  EXPECT_THAT(tickers, ElementsAre("MSFT", "IBM", "GE"));
  EXPECT_EQ(printed.Text(), "");
}

TEST_F(Person, TakesATickerThatIsNamedTwiceOnce) {
  wishes.tickers = {"A", "B", "a", "C"};
  Go();
  EXPECT_THAT(tickers, ElementsAre("A", "B", "C"));
}

TEST_F(Person, MakesTheTableHoldTheTickersNamedInTheirOrder) {
  Table({"Ticker", "Last"}, {"OLD", "IBM", "GONE", "MSFT"});
  wishes.tickers = {"MSFT", "NEW", "ibm"};
  Go();
  EXPECT_THAT(tickers, ElementsAre("MSFT", "NEW", "IBM"));
}

TEST_F(Person, DoesSoWithoutVerticalTablesToo) {
  Save("VerticalTable", 0);
  Table({"Ticker", "Last"}, {"OLD", "IBM", "GONE", "MSFT"});
  wishes.tickers = {"MSFT", "NEW", "ibm"};
  Go();
  EXPECT_THAT(tickers, ElementsAre("MSFT", "NEW", "IBM"));
}

TEST_F(Person, KeepsTheTickersOfTheTableWhenNoneAreNamed) {
  Table({"Ticker", "Last"}, {"OLD", "IBM"});
  wishes.tickers = {};
  EXPECT_EQ(Go(), 78);
  EXPECT_THAT(tickers, ElementsAre("OLD", "IBM"));
}

TEST_F(Person, AsksForTickersWhenThereAreNone) {
  wishes.tickers = {};
  ExpectComplaint("which tickers? Name them with --tickers MSFT,IBM");
}

TEST_F(Person, ArrangesTheColumns) {
  const Texts defaults{"Ticker", "Last", "Change", "Bid", "Ask", "Date", "Time"};
  struct Case {
    Texts wanted;
    Texts shown;
  };
  for (const Case& c : {Case{{}, defaults}, Case{defaults, defaults},
                        Case{{"Ticker", "Time", "Last"}, {"Ticker", "Time", "Last"}},
                        Case{{"Volume", "last", "52W HIGH"}, {"Ticker", "Volume", "Last", "52w High"}},
                        Case{{"TICKER"}, {"Ticker"}},
                        Case{{"Ticker", "Time", "Date", "Ask", "Bid", "Change", "Last"},
                             {"Ticker", "Time", "Date", "Ask", "Bid", "Change", "Last"}}}) {
    SCOPED_TRACE(::testing::PrintToString(c.wanted));
    wishes.columns = c.wanted;
    EXPECT_EQ(Go(), 78) << complaint;
    EXPECT_EQ(columns, c.shown);
  }
}

TEST_F(Person, RefusesColumnsThatTheDialogCannotShowSo) {
  struct Case {
    Texts wanted;
    const char* complaint;
  };
  for (const Case& c :
       {Case{{"Ticker", "Price"}, "--columns: there is no column \"Price\"; there are Ticker,Last,"},
        Case{{"Last", "Ticker"}, "--columns: the dialog keeps \"Ticker\" in front"},
        Case{{"Last", "LAST"}, "--columns: \"LAST\" stands there twice"},
        Case{{"Ticker", ""}, "there is no column \"\""}}) {
    SCOPED_TRACE(c.complaint);
    wishes.columns = c.wanted;
    ExpectComplaint(c.complaint);
  }
}

TEST_F(Person, TicksFieldsOfVerticalTables) {
  wishes.columns = {"Ticker", "Last", "LastVolume", "Bid"};
  wishes.settings = {{"BuildCharts", "1"}};
  wishes.ticks = {{"msft", "bid"}, {"IBM", "Charts"}, {"IBM", "Last"}};
  EXPECT_EQ(Go(), 78) << complaint;
  EXPECT_THAT(headers, ElementsAre("", "Ticker", "Last", "LastVolume", "Bid", "Charts (Last & Volume)"));
  EXPECT_THAT(ticked, ElementsAre(Texts{"Bid"}, Texts{"Last", "LastVolume", "Charts (Last & Volume)"}));
}

TEST_F(Person, RefusesTicksThatCannotBe) {
  struct Case {
    DialogWishes::Tick tick;
    const char* vertical;
    const char* complaint;
  };
  for (const Case& c :
       {Case{{"GE", "Last"}, "1", "--tick GE:Last: \"GE\" is not among the tickers"},
        Case{{"IBM", "Volume"}, "1", "vertical tables have no field \"Volume\"; they have Last"},
        Case{{"IBM", "Ticker"}, "1", "no field \"Ticker\""},
        Case{{"IBM", "Last"}, "0", "there are no vertical tables; add --set VerticalTable=1"},
        Case{{"IBM", "Charts"}, "1", "no field \"Charts\""}}) {
    SCOPED_TRACE(c.complaint);
    wishes.ticks = {c.tick};
    wishes.settings = {{"VerticalTable", c.vertical}};
    ExpectComplaint(c.complaint);
  }
}

TEST_F(Person, CannotTickChartsWithoutTheirFields) {
  wishes.columns = {"Ticker", "Last"};
  wishes.settings = {{"BuildCharts", "1"}};
  wishes.ticks = {{"IBM", "Charts"}};
  ExpectComplaint("--tick IBM:Charts: the dialog does not let it be ticked");
  EXPECT_THAT(printed.Text(),
              HasSubstr("information: Dovanta2: Add  the 'LastVolume' column for the vertical output."));
}

TEST_F(Person, CancelsWhenTheDialogReportsAFailure) {
  Save("Style", "Blue");
  registry.Raise("RegQueryValueExA");
  EXPECT_EQ(Go(), 2);
  EXPECT_EQ(complaint, "the dialog has reported a failure") << printed.Text();
  EXPECT_THAT(printed.Text(), HasSubstr("pressed: Abort"));
  EXPECT_THAT(internet.requests, IsEmpty());
}

TEST_F(Person, CancelsWhenAFailureIsReportedAmongItsActs) {
  wishes.settings = {{"FillColorON", "255"}};
  registry.Fail("RegSetValueExA", 82);  // behind the list of sources
  EXPECT_EQ(Go(), 2);
  EXPECT_EQ(complaint, "the dialog has reported a failure") << printed.Text();
  EXPECT_THAT(printed.Text(), HasSubstr("Mirelo.frmMirelo.ButOn_Click"));
  EXPECT_THAT(internet.requests, IsEmpty());
}

TEST_F(Person, StoresNoColourWhenSomethingElseIsRefused) {
  wishes.settings = {{"FillColorON", "255"}};
  wishes.ticks = {{"GE", "Last"}};
  ExpectComplaint("GE");
  EXPECT_EQ(mGlobal::AppSettings().GetSetting("Settings", "FillColorON", "none").ToText(), "none");
}

TEST(DialogControls, AreSettingsOfTheCatalogueEachOnce) {
  Texts keys;
  for (const DialogControl& control : DialogControls()) {
    SCOPED_TRACE(control.key);
    const bool source = control.key == "ComQuoteSource";
    EXPECT_NE(FindSetting(source ? "Settings\\QuoteSource\\First" : "Settings", control.key), nullptr);
    EXPECT_EQ(FindDialogControl(control.key), &control);
    keys.emplace_back(control.key);
  }
  EXPECT_THAT(keys, ::testing::UnorderedElementsAre(
                        "Seconds", "Style", "VerticalTable", "RowsLimit", "BuildCharts", "ChartStyle",
                        "ChartPoints", "txtDecimalPlaces", "txtVerticalSheet", "ColorPoints", "GreyOut",
                        "AddYAxis", "HTTPPort", "SocketPort", "Webaddress", "UpdateEvery", "DisplayTimezone",
                        "DisplayOffset", "ComQuoteSource", "FillColorON", "FillColorOFF"));
  EXPECT_EQ(FindDialogControl("Sort_Desc"), nullptr);
}

}  // namespace
}  // namespace mirelo::testing
