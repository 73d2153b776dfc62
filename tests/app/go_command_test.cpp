// mirelo go, run against a stand-in that serves in this process.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "app/program.h"
#include "core/setting_names.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/shapes.h"
#include "host/excel/sheet.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "person/dialog_controls.h"
#include "quotetracker/server.h"
#include "support/loopback_server.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using Arguments = std::vector<std::string>;

class Go : public ::testing::Test {
 protected:
  ProgramResult Run(Arguments arguments) { return RunAt(server.HttpPort(), std::move(arguments)); }
  ProgramResult RunAt(std::uint16_t port, Arguments arguments) {
    arguments.insert(arguments.begin(), {"go", "--http-port", std::to_string(port)});
    return RunMirelo(folder.path(), arguments);
  }
  // The value of a setting, its default when nothing is stored.
  std::string Shown(const std::string& name) {
    const auto result = RunMirelo(folder.path(), {"settings", "get", name});
    return result.out.substr(0, result.out.find('\n'));
  }

  TempDirectory folder;
  quotetracker::Server server;
};

TEST_F(Go, CommitsWhatTheDialogShows) {
  const auto result = Run({"--tickers", "MSFT,IBM"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(result.out, "Committed: quotes are to be asked for every 60 seconds\n");
  EXPECT_THAT(result.err, IsEmpty());
  EXPECT_EQ(Shown("Style"), "Blue");
  EXPECT_EQ(static_cast<std::uint16_t>(std::stoi(Shown("HTTPPort"))), server.HttpPort());
  EXPECT_THAT(server.Requests(), ::testing::ElementsAre("/req?EnumPorts()", "/req?EnumPortSymbols(Main)"));
}

TEST_F(Go, SaysHowQuotesAreToCome) {
  struct Case {
    Arguments arguments;
    const char* out;
  };
  for (const Case& c :
       {Case{{"--set", "Seconds=15"}, "Committed: quotes are to be asked for every 15 seconds\n"},
        Case{{"--set", "UpdateEvery=0"}, "Committed: quotes are to be asked for once\n"},
        Case{{"--set", "Seconds=0", "--set", "UpdateEvery=1"},
             "Committed: quotes are to be streamed from Alpstein Finance (delayed)\n"},
        Case{{"--source", "iqfeed us - streaming realtime (subscription)"},
             "Committed: quotes are to be streamed from IQFeed US - STREAMING RealTime (Subscription)\n"},
        Case{{"--source", "Schwab"},
             "Committed: quotes are to be streamed from Schwab - RealTime (Clients Only)\n"}}) {
    SCOPED_TRACE(c.out);
    Arguments arguments{"--tickers", "MSFT"};
    arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
    const auto result = Run(arguments);
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(result.out, c.out);
  }
  EXPECT_EQ(Shown("Seconds"), "0");
  EXPECT_EQ(Shown("QuoteSource\\First\\ComQuoteSource"), "Schwab - RealTime (Clients Only)");
}

TEST_F(Go, GivesTheDialogEachSettingThatItHasAControlFor) {
  struct Case {
    const char* key;
    const char* value;
    const char* stored;
  };
  const Case cases[]{{"Seconds", "15", "15"},
                     {"Style", "yellow", "Yellow"},
                     {"VerticalTable", "1", "1"},
                     {"RowsLimit", "300", "300"},
                     {"BuildCharts", "1", "1"},
                     {"ChartStyle", "Green", "Green"},
                     {"ChartPoints", "50", "50"},
                     {"txtDecimalPlaces", "4", "4"},
                     {"txtVerticalSheet", "My Sheet", "My Sheet"},
                     {"ColorPoints", "0", "0"},
                     {"GreyOut", "0", "0"},
                     {"AddYAxis", "1", "1"},
                     {"UpdateEvery", "1", "1"},
                     {"DisplayTimezone", "india", "(ET+9.5) India"},
                     {"DisplayOffset", "-0:30", "-0:30"},
                     {"FillColorON", "255", "255"},
                     {"FillColorOFF", "-4142", "-4142"}};
  // Those that are options of their own, or that other tests choose.
  std::set<std::string_view> keys{"SocketPort", "Webaddress", "HTTPPort", catalogue::kFirstSourceKey};
  for (const Case& c : cases) keys.insert(c.key);
  for (const DialogControl& control : DialogControls()) {
    EXPECT_TRUE(keys.contains(control.key)) << control.key << " has a control and no case here";
  }
  Arguments arguments{"--tickers", "MSFT", "--socket-port", "16999", "--address", "localhost"};
  // Against the order in which the dialog needs them.
  for (auto c = std::rbegin(cases); c != std::rend(cases); ++c) {
    arguments.insert(arguments.end(), {"--set", std::string(c->key) + "=" + c->value});
  }
  const auto result = Run(arguments);
  ASSERT_EQ(result.exit_code, 0) << result.err;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.key);
    EXPECT_EQ(Shown(c.key), c.stored);
  }
  EXPECT_EQ(Shown("SocketPort"), "16999");
  EXPECT_EQ(Shown("Webaddress"), "localhost");
  EXPECT_EQ(Shown("DisplacementHour"), "9");
  EXPECT_EQ(Shown("DisplacementMinute"), "60");
}

TEST_F(Go, UnticksWhatIsSetToNoneOrZero) {
  const auto result = Run({"--tickers", "MSFT", "--set", "Style=None", "--set", "RowsLimit=0", "--set",
                           "BuildCharts=1", "--set", "ChartStyle=none"});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(Shown("Style"), "None");
  EXPECT_EQ(Shown("RowsLimit"), "0");
  EXPECT_EQ(Shown("ChartStyle"), "None");
}

TEST_F(Go, RefusesBeforeItOpensTheDialogWhatItHasNoControlFor) {
  struct Case {
    Arguments arguments;
    const char* error;
  };
  for (const Case& c : {
           Case{{"--set", "Sort_Desc=True"},
                "the dialog has no control for Sort_Desc; use mirelo settings set"},
           Case{{"--set", "DisplacementHour=3"}, "the dialog has no control for DisplacementHour"},
           Case{{"--set", "WidthField\\Ticker=3"}, "the dialog has no control for WidthField\\Ticker"},
           Case{{"--set", "Colour=3"}, "no setting is named \"Colour\"; mirelo settings list shows them all"},
           Case{{"--set", "Seconds"}, "\"Seconds\" has no \"=\"; write Seconds=15"},
           Case{{"--set", "Seconds=soon"},
                "Seconds: \"soon\" is not allowed here: the value must be a whole"},
           Case{{"--set", "Seconds=5000"}, "a whole number from 0 to 3600"},
           Case{{"--set", "txtVerticalSheet=a/b"}, "at most 28 characters"},
           Case{{"--set", "FillColorON=1"}, "a colour of the dialog's palette"},
           Case{{"--address", "http://host"}, "a host name or an address alone"},
           Case{{"--set", "Webaddress=host:80"}, "a host name or an address alone"},
           Case{{"--set", "VerticalTable=2"}, "a whole number from 0 to 1"},
           Case{{"--set", "Seconds=1", "--set", "seconds=2"}, "Seconds is given twice"},
           Case{{"--set", "HTTPPort=1"}, "HTTPPort is given twice"},
           Case{{"--set", "ListRight=Ticker", "--columns", "Ticker"}, "ListRight is given twice"},
           Case{{"--tick", "MSFT"}, "\"MSFT\" is no ticker and field; write MSFT:Last"},
           Case{{"--tick", "MSFT:"}, "\"MSFT:\" is no ticker and field"},
           Case{{"--tickers", "GE, F(T)"}, "a ticker holds no bracket: \"F(T)\""},
           Case{{"--tickers", " , "}, "\" , \" names no ticker"},
           Case{{"--workbook", "q.csv"},
                "\"q.csv\" is no workbook that can be written; only .xlsx files can, as in q.xlsx"},
           Case{{"--workbook", "quotes"}, "only .xlsx files can"},
           Case{{"--workbook", "q.ods"},
                "only .xlsx files can, as in q.xlsx. LibreOffice Calc can write it: --through calc"},
           Case{{"--workbook", "q.csv", "--through", "calc"},
                "\"q.csv\": LibreOffice Calc is to write .ods, .xlsx, .xls and .fods files, as in q.ods"},
           Case{{"--through", "excel"}, "--through: excel not in {mirelo,calc}"},
           Case{{"--socket-port", "0"}, "--socket-port"},
       }) {
    SCOPED_TRACE(c.error);
    const auto result = Run(c.arguments);
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.err, HasSubstr(c.error));
  }
  EXPECT_FALSE(std::filesystem::exists(folder / "home/.local"));
}

TEST_F(Go, CancelsWhatTheDialogDoesNotLetAPersonDo) {
  struct Case {
    Arguments arguments;
    const char* error;
  };
  for (const Case& c : {
           Case{{"--set", "Seconds=15", "--set", "UpdateEvery=0"},
                "Seconds: the dialog has switched this off; add --set UpdateEvery=1"},
           Case{{"--set", "ComQuoteSource=OC Securities"},
                "ComQuoteSource: the dialog has switched this off; add --set Seconds=0 (a source is chosen "
                "for "
                "streaming)"},
           Case{{"--set", "RowsLimit=15", "--set", "VerticalTable=0"}, "add --set VerticalTable=1"},
           Case{{"--set", "ChartStyle=Blue"},
                "ChartStyle: the dialog has switched this off; add --set BuildCharts=1"},
           Case{{"--set", "ChartPoints=15"}, "add --set BuildCharts=1"},
           Case{{"--set", "ChartPoints=15", "--set", "BuildCharts=1", "--set", "ChartStyle=None"},
                "add --set ChartStyle=Blue"},
           Case{{"--set", "ColorPoints=0"}, "add --set BuildCharts=1"},
           Case{{"--set", "GreyOut=0"}, "add --set BuildCharts=1"},
           Case{{"--set", "AddYAxis=1"}, "add --set BuildCharts=1"},
           Case{{"--set", "ChartPoints=500", "--set", "BuildCharts=1"}, "the dialog makes 100 of 500"},
           Case{{"--set", "Style=Pink"},
                "Style: \"Pink\" is none of the choices:\n  Blue\n  Green\n  Yellow\n  None"},
           Case{{"--set", "DisplayTimezone=(ET+"}, "is none of the choices"},
           Case{{"--set", "DisplayOffset="}, "is none of the choices"},
           Case{{"--source", "Nowhere"}, "ComQuoteSource: \"Nowhere\" is none of the choices"},
           Case{{"--columns", "Ticker,Price"}, "--columns: there is no column \"Price\""},
           Case{{"--tick", "GE:Last"}, "--tick GE:Last: \"GE\" is not among the tickers"},
       }) {
    SCOPED_TRACE(c.error);
    Arguments arguments{"--tickers", "MSFT"};
    arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
    const auto result = Run(arguments);
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.err, AllOf(HasSubstr(c.error), HasSubstr("Nothing was committed.")));
  }
  EXPECT_THAT(server.Requests(), IsEmpty());
}

TEST_F(Go, AsksForTickers) {
  const auto result = Run({});
  EXPECT_EQ(result.exit_code, 2);
  EXPECT_THAT(result.err, HasSubstr("which tickers? Name them with --tickers MSFT,IBM"));
}

TEST_F(Go, PrintsWhyNothingWasCommitted) {
  const RefusingPort nobody;
  const auto result = RunAt(nobody.Port(), {"--tickers", "MSFT"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.out, IsEmpty());
  EXPECT_EQ(result.err,
            "information: Dovanta2: Please run QuoteTracker.\n"
            "  Asked at 127.0.0.1 (Webaddress by default), port " +
                std::to_string(nobody.Port()) +
                " (HTTPPort, given for this command): the connection was refused, so nothing listens there.\n"
                "  Start QuoteTracker there, switch on its HTTP interface, and compare the port with its "
                "preferences; mirelo settings set HTTPPort, or --http-port, gives another.\n"
                "error: nothing was committed\n");
  EXPECT_THAT(Shown("Webaddress"), "127.0.0.1");
}

TEST_F(Go, SaysThatQuoteTrackerHasNoPortfolio) {
  quotetracker::ServerOptions options;
  options.portfolios.clear();
  const quotetracker::Server empty(std::move(options));
  const auto result = RunAt(empty.HttpPort(), {"--tickers", "MSFT"});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_THAT(result.err, HasSubstr("QuoteTracker has no portfolio; make one there."));
}

TEST_F(Go, ReadsTheTableOfTheWorkbookThatIsNamed) {
  const std::string file = (folder / "quotes.xlsx").string();
  {
    auto spreadsheet = workbook::Spreadsheet::New();
    const auto sheet = spreadsheet.Application()->ActiveWorkbook()->Worksheets()->Add();
    sheet->Name("Dovanta2_Quotes");
    sheet->Range("A1")->Value("SnapShot( 30 sec)");
    sheet->Range("A2")->Value("Ticker");
    sheet->Range("B2")->Value("Last");
    sheet->Range("A3")->Value("MSFT");
    spreadsheet.Save(file);
  }
  const auto result = Run({"--workbook", file});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(result.out, "Committed: quotes are to be asked for every 30 seconds\n");
  EXPECT_EQ(result.err, "Saved in " + file + "\n");
}

TEST_F(Go, TicksAHistoryForEveryTicker) {
  const std::string file = (folder / "quotes.xlsx").string();
  ASSERT_EQ(Run({"--workbook", file, "--tickers", "MSFT,IBM", "--history"}).exit_code, 0);
  const auto spreadsheet = workbook::Spreadsheet::Open(file);
  const auto sheets = spreadsheet.Application()->ActiveWorkbook()->Worksheets();
  for (const char* name : {"Quotes_Vertical(MSFT)", "Quotes_Vertical(IBM)"}) {
    const auto sheet = sheets->Item(name);
    std::string fields;
    for (std::int32_t column = 1; column <= 4; ++column) fields += sheet->Cells(2, column)->Text() + "|";
    EXPECT_EQ(fields, "Last|Time|LastVolume||") << "in the order of the table's columns";
  }
  EXPECT_EQ(sheets->Item("Dovanta2_Quotes")->Range("H2")->Text(), "LastVolume") << "added at the right";
}

TEST_F(Go, BuildsChartsForEveryTicker) {
  const std::string file = (folder / "quotes.xlsx").string();
  const auto result =
      Run({"--workbook", file, "--tickers", "MSFT,IBM", "--history", "Bid", "--chart-axis", "--charts"});
  ASSERT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(Shown("AddYAxis"), "1");
  EXPECT_EQ(Shown("BuildCharts"), "1");
  const auto spreadsheet = workbook::Spreadsheet::Open(file);
  for (const char* name : {"Quotes_Vertical(MSFT)", "Quotes_Vertical(IBM)"}) {
    const auto sheet = spreadsheet.Application()->ActiveWorkbook()->Worksheets()->Item(name);
    EXPECT_EQ(sheet->Shapes()->Count(), 4) << "two charts, two marks";
  }
}

TEST_F(Go, RefusesFieldsThatNoHistoryHas) {
  EXPECT_THAT(Run({"--tickers", "MSFT", "--history", "Last,Price"}).err,
              HasSubstr("there is no field \"Price\" of a history"));
  EXPECT_THAT(Run({"--tickers", "MSFT", "--history", "Tick"}).err,
              HasSubstr("--history Tick: vertical tables have no field \"Tick\""));
}

TEST_F(Go, PutsTheQuoteTableInFront) {
  const std::string file = (folder / "quotes.xlsx").string();
  ASSERT_EQ(Run({"--workbook", file, "--tickers", "MSFT,IBM", "--history"}).exit_code, 0);
  EXPECT_EQ(workbook::Spreadsheet::Open(file).Application()->ActiveSheet()->Name(), "Dovanta2_Quotes");
}

TEST_F(Go, CostsNothingWithoutBeingAllowedTo) {
  const std::string file = (folder / "quotes.xlsx").string();
  ASSERT_EQ(Run({"--workbook", file, "--tickers", "MSFT", "--history", "Last"}).exit_code, 0);
  {
    auto spreadsheet = workbook::Spreadsheet::Open(file);
    const auto sheets = spreadsheet.Application()->ActiveWorkbook()->Worksheets();
    sheets->Item("Quotes_Vertical(MSFT)")->Range("A3")->Value(28.5);
    spreadsheet.Save(file);
  }
  const Arguments again{"--workbook", file, "--history", "Last,Bid", "--tickers", "MSFT,RDS/A"};
  const auto refused = Run(again);
  EXPECT_EQ(refused.exit_code, 1);
  EXPECT_THAT(refused.out, IsEmpty());
  EXPECT_THAT(refused.err, AllOf(HasSubstr("warning: The history on Quotes_Vertical(MSFT) is cleared"),
                                 HasSubstr("warning: RDS/A gets no history"), HasSubstr("add --yes"),
                                 ::testing::Not(HasSubstr("portfolio"))));
  const auto at_a3 = [&] {
    const auto spreadsheet = workbook::Spreadsheet::Open(file);
    return spreadsheet.Application()
        ->ActiveWorkbook()
        ->Worksheets()
        ->Item("Quotes_Vertical(MSFT)")
        ->Range("A3")
        ->Text();
  };
  EXPECT_EQ(at_a3(), "28.50");

  Arguments allowed = again;
  allowed.push_back("--yes");
  const auto done = Run(allowed);
  EXPECT_EQ(done.exit_code, 0);
  EXPECT_THAT(done.err, HasSubstr("warning: The history on Quotes_Vertical(MSFT) is cleared"));
  EXPECT_EQ(at_a3(), "");
}

TEST_F(Go, MakesAWorkbookOnlyWhenItCommits) {
  const auto file = folder / "new.xlsx";
  EXPECT_EQ(Run({"--workbook", file.string(), "--tickers", "MSFT", "--columns", "Price"}).exit_code, 2);
  const RefusingPort nobody;
  EXPECT_EQ(RunAt(nobody.Port(), {"--workbook", file.string(), "--tickers", "MSFT"}).exit_code, 1);
  EXPECT_FALSE(std::filesystem::exists(file));
  EXPECT_EQ(Run({"--workbook", file.string(), "--tickers", "MSFT"}).exit_code, 0);
  EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(Go, UsesTheRegistryThatIsNamed) {
  const std::string registry = (folder / "other.db").string();
  const auto result = RunMirelo(
      folder.path(), {"--registry", registry, "go", "--http-port", std::to_string(server.HttpPort()),
                      "--tickers", "MSFT", "--set", "Seconds=7"});
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(Shown("Seconds"), "10");
  EXPECT_EQ(RunMirelo(folder.path(), {"--registry", registry, "settings", "get", "Seconds"}).out, "7\n");
}

}  // namespace
}  // namespace mirelo::testing
