// A working day of quotes that are asked for, from the dialog's Go over midnight.

#include <gmock/gmock.h>

#include <chrono>
#include <string>
#include <vector>

#include "automation/number.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "scenarios/day_rig.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::int32_t kAsked = 78;

// One line of a reply to a request for quotes.
struct Line {
  std::string ticker;
  std::string last = "28.35";
  std::string volume = "1000";
  std::string date = "01/20/2011";
  std::string bid = "28.34";

  std::string Text() const {
    return ticker + "," + date + ",09:30:00," + last + "," + bid + ",28.36,-0.10,U," + volume +
           ",29,28,100,200,77,150,12,28.5,20,35";
  }
};

class SnapshotDay : public Day {
 protected:
  SnapshotDay() {
    wishes.tickers = {"MSFT", "IBM"};
    wishes.columns = {"Ticker", "Last", "Bid", "Change", "Volume", "LastVolume", "Date", "Time"};
    wishes.settings = {{"UpdateEvery", "1"}, {"Seconds", "15"}, {"VerticalTable", "1"}, {"RowsLimit", "4"}};
    wishes.ticks = {{"MSFT", "Time"}, {"MSFT", "Last"}, {"MSFT", "LastVolume"}};
    internet.answer = [this](const AnsweringInternet::Request& request) {
      return request.resource.starts_with("/req?GetLastQuote(") ? reply : portfolios(request);
    };
    Reply({{"MSFT"}, {"IBM", "160.5"}});
  }

  void Reply(const std::vector<Line>& lines) {
    reply = "OK";
    for (const Line& line : lines) *reply += "\r\n" + line.Text();
  }
  int QuoteRequests() const {
    int count = 0;
    for (const auto& resource : internet.Resources()) count += resource.starts_with("/req?GetLastQuote(");
    return count;
  }

  std::optional<std::string> reply;
};

TEST_F(SnapshotDay, BeginsWithTheDialogsGoAndTheFirstQuotes) {
  EXPECT_EQ(Begin(), kAsked);
  EXPECT_EQ(Text(kTable, 1, 1), "SnapShot( 15 sec)");
  EXPECT_EQ(Text(kTable, 3, 1), "MSFT");
  EXPECT_EQ(Text(kTable, 3, 2), "28.35");
  EXPECT_EQ(Text(kTable, 4, 1), "IBM");
  EXPECT_EQ(Text(kTable, 4, 2), "160.5");
  EXPECT_THAT(internet.Resources(), Contains("/req?GetLastQuote(MSFT,IBM)"));
  EXPECT_EQ(printed.Text(), "");
}

TEST_F(SnapshotDay, AsksAgainAtThePaceOfTheSettings) {
  behind_go = [&] { day->Over.Subscribe([] { ADD_FAILURE() << "there is more to come"; }); };
  Begin();
  EXPECT_EQ(QuoteRequests(), 1);
  Pass(14s);
  EXPECT_EQ(QuoteRequests(), 1);
  Pass(1s);
  EXPECT_EQ(QuoteRequests(), 2);
  Pass(30s);
  EXPECT_EQ(QuoteRequests(), 4);
}

TEST_F(SnapshotDay, CountsTheQuotesOfATableOfTickersAloneAndSaysOnceThatNothingIsShown) {
  wishes.columns = {"Ticker"};
  wishes.ticks.clear();
  Begin();
  EXPECT_EQ(day->Came().Count(), 2);
  Pass(30s);
  EXPECT_EQ(day->Came().Count(), 6);
  EXPECT_THAT(told, ElementsAre(HasSubstr("nothing of them is shown"), "2 quotes", "2 quotes", "2 quotes"));
  EXPECT_EQ(Text(kTable, 3, 1), "MSFT");
}

TEST_F(SnapshotDay, WritesNumbersAndDatesAsSuchAndAllElseAsText) {
  Reply({{"MSFT", "28.35"}, {"IBM", "=1+1", "+5E2", "01/20/2011", "1/2"}});
  Begin();
  EXPECT_EQ(Cell(kTable, 3, 2).type(), Variant::Type::Double);
  EXPECT_EQ(Cell(kTable, 3, 5).type(), Variant::Type::Double);
  EXPECT_EQ(Cell(kTable, 3, 7).type(), Variant::Type::Date);
  EXPECT_EQ(Cell(kTable, 3, 8).type(), Variant::Type::Date);
  EXPECT_EQ(Cell(kTable, 4, 2).type(), Variant::Type::String);
  EXPECT_EQ(Text(kTable, 4, 2), "=1+1");
  EXPECT_EQ(Cell(kTable, 4, 3).type(), Variant::Type::String) << "neither a date nor a fraction";
  EXPECT_EQ(Text(kTable, 4, 3), "1/2");
}

// One ticker's bad values cost these values alone.
TEST_F(SnapshotDay, CutsATextThatNoCellTakesTellsItOnceAndGoesOn) {
  std::string bad;
  while (bad.size() < 40'000) bad += "_x0041_";  // a file writes each of these in more characters
  Reply({{"MSFT", bad}, {"IBM", "160.5", "1000", "01/20/2011", bad}});
  Begin();
  Pass(15s);
  EXPECT_THAT(told, ElementsAre("2 quotes", "MSFT: Last is too long for a cell; cut to 16383 characters",
                                "IBM: Bid is too long for a cell; cut to 16383 characters", "2 quotes"));
  EXPECT_EQ(Text(kTable, 3, 2), bad.substr(0, 16'383));
  EXPECT_EQ(Text(kTable, 4, 2), "160.5");
  EXPECT_THAT(Column(History("MSFT"), 1), SizeIs(1)) << "the same quote again is no new one";
  Reply({{"MSFT", "28.40"}, {"IBM"}});
  Pass(15s);
  EXPECT_EQ(Text(kTable, 3, 2), "28.4");
  const TempDirectory folder;
  EXPECT_NO_THROW(spreadsheet.Save(folder / "quotes.xlsx"));
}

TEST_F(SnapshotDay, GoesOnForTheOthersWhereOneVolumeIsNoNumber) {
  Begin();
  for (int n = 1; n <= 3; ++n) {
    Reply({{"MSFT", "28.4" + std::to_string(n), std::to_string(1000 + 100 * n)}, {"IBM", "160.5", "N/A"}});
    Pass(15s);
    EXPECT_EQ(Text(kTable, 3, 2), "28.4" + std::to_string(n));
    EXPECT_EQ(Text(kTable, 3, 6), "100");
    EXPECT_EQ(Text(kTable, 4, 5), "N/A");
    EXPECT_TRUE(Cell(kTable, 4, 6).IsEmpty());
  }
  EXPECT_EQ(printed.Text(), "");
  EXPECT_THAT(told,
              ElementsAre("2 quotes", "The volume is no number, so LastVolume stays empty, for IBM (\"N/A\")",
                          "2 quotes", "2 quotes", "2 quotes"));
}

TEST_F(SnapshotDay, KeepsWhatItKnowsOfATickerThatIsMissing) {
  Begin();
  Reply({{"IBM", "161.5"}});
  Pass(15s);
  EXPECT_EQ(Text(kTable, 3, 2), "28.35") << "not the price of another ticker, and not nothing";
  EXPECT_EQ(Text(kTable, 4, 2), "161.5");
  EXPECT_THAT(Column(History("MSFT"), 1), SizeIs(1)) << "what did not come is no row of the history";
  EXPECT_THAT(told, ElementsAre("2 quotes", "QuoteTracker sent no quote for MSFT", "1 quote"));
}

// QuoteTracker answers with zeros for a ticker that it does not know.
TEST_F(SnapshotDay, WritesNoQuoteOfNothing) {
  const std::string zeros = ",01/20/2011,09:30:00,0.00,0.00,0.00,0.00,,0,0.00,0.00,0,0,0,0,0,0.00,0.00,0.00";
  Begin();
  reply = "OK\r\nMSFT" + zeros + "\r\nIBM" + zeros;
  Pass(30s);
  EXPECT_EQ(Text(kTable, 3, 2), "28.35") << "what was known stays";
  EXPECT_THAT(Column(History("MSFT"), 1), SizeIs(1));
  EXPECT_THAT(told,
              ElementsAre("2 quotes", "QuoteTracker knows no quote of MSFT, IBM", "0 quotes", "0 quotes"));
}

TEST_F(SnapshotDay, GoesOnWithAHistoryOfLongTexts) {
  Begin();
  day->Stop();
  day.reset();
  const std::string longest(32'767, 'x');
  spreadsheet.Application()->Worksheets()->Item(History("MSFT"))->Cells(3, 1)->Value("'" + longest);
  wishes.ticks.clear();
  Begin();
  for (const char* last : {"29", "30", "31"}) {
    EXPECT_EQ(Text(History("MSFT"), 3, 1), longest);
    Reply({{"MSFT", last}, {"IBM"}});
    Pass(15s);
  }
  EXPECT_NE(Text(History("MSFT"), 3, 1), longest) << "it is moved up and out";
}

TEST_F(SnapshotDay, WidensTheColumnsOfAHistoryForWhatTheyHold) {
  wishes.ticks.push_back({"MSFT", "Date"});
  Begin();
  const auto sheet = spreadsheet.Application()->Worksheets()->Item(History("MSFT"));
  const auto width = [&](std::int32_t column) { return sheet->Cells(1, column)->ColumnWidth().ToDouble(); };
  const auto column_of = [&](const char* field) {
    std::int32_t column = 1;
    while (sheet->Cells(2, column)->Value() != Variant(field)) ++column;
    return column;
  };
  const std::int32_t last = column_of("Last");
  EXPECT_GT(width(column_of("LastVolume")), 10) << "of its header's letters in bold";
  EXPECT_GT(width(column_of("Date")), 9.5) << "a date of ten characters";

  const double before = width(last);
  Reply({{"MSFT", "123456789012.35", "2000"}, {"IBM"}});
  Pass(15s);
  EXPECT_GT(width(last), before);
  const double widest = width(last);
  Reply({{"MSFT", "1", "3000"}, {"IBM"}});
  Pass(15s);
  EXPECT_EQ(width(last), widest) << "it gets no narrower";
  sheet->Cells(1, last)->ColumnWidth(50);
  Reply({{"MSFT", "999999999999999", "4000"}, {"IBM"}});
  Pass(15s);
  EXPECT_EQ(width(last), 50) << "a person may have made it so";
}

TEST_F(SnapshotDay, AppendsEachNewQuoteToTheHistoryInTheOrderOfTheFields) {
  Begin();
  Pass(15s);  // the same quote
  Reply({{"MSFT", "28.40", "1300"}, {"IBM"}});
  Pass(15s);
  const std::string sheet = History("MSFT");
  std::vector<std::string> fields;
  for (std::int32_t column = 1; column <= 3; ++column) fields.push_back(Text(sheet, 2, column));
  std::vector<std::vector<std::string>> rows(2);
  for (std::int32_t column = 1; column <= 3; ++column) {
    EXPECT_THAT(Column(sheet, column), SizeIs(2)) << fields[static_cast<std::size_t>(column - 1)];
  }
  const auto place = [&](const char* field) {
    return static_cast<std::int32_t>(std::ranges::find(fields, field) - fields.begin()) + 1;
  };
  EXPECT_THAT(Column(sheet, place("Last")), ElementsAre("28.35", "28.4"));
  EXPECT_THAT(Column(sheet, place("LastVolume")), ElementsAre("0", "300"));
  EXPECT_EQ(Cell(sheet, 4, place("Time")).type(), Variant::Type::Date);
}

TEST_F(SnapshotDay, TakesAnotherTradeOfTheSameSizeForANewQuote) {
  Begin();
  for (const char* volume : {"1300", "1600", "1600"}) {
    Reply({{"MSFT", "28.35", volume}, {"IBM"}});
    Pass(15s);
  }
  EXPECT_THAT(Column(History("MSFT"), 1), SizeIs(3));
}

TEST_F(SnapshotDay, KeepsTheNewestRowsAndTheFormatsWhereTheyAre) {
  Begin();
  for (int price = 1; price <= 9; ++price) {
    Reply({{"MSFT", std::to_string(price)}, {"IBM"}});
    Pass(15s);
  }
  const std::string sheet = History("MSFT");
  std::int32_t last = 1;
  while (Text(sheet, 2, last) != "Last") ++last;
  EXPECT_THAT(Column(sheet, last), ElementsAre("6", "7", "8", "9"));
}

TEST_F(SnapshotDay, GoesOnWithTheHistoryOfTheDayBefore) {
  Begin();
  day->Stop();
  day.reset();
  Reply({{"MSFT", "30"}, {"IBM"}});
  wishes.ticks.clear();
  Begin();
  const std::string sheet = History("MSFT");
  std::int32_t last = 1;
  while (Text(sheet, 2, last) != "Last") ++last;
  EXPECT_THAT(Column(sheet, last), ElementsAre("28.35", "30"));
}

TEST_F(SnapshotDay, KeepsNoMoreOfTheDayBeforeThanASmallerLimit) {
  Begin();
  for (int price = 1; price <= 3; ++price) {
    Reply({{"MSFT", std::to_string(price)}, {"IBM"}});
    Pass(15s);
  }
  day->Stop();
  day.reset();
  Reply({{"MSFT", "30"}, {"IBM"}});
  wishes.settings.back() = {"RowsLimit", "2"};
  wishes.ticks.clear();
  Begin();
  const std::string sheet = History("MSFT");
  std::int32_t last = 1;
  while (Text(sheet, 2, last) != "Last") ++last;
  EXPECT_THAT(Column(sheet, last), ElementsAre("3", "30"));
}

TEST_F(SnapshotDay, WritesTimesWhereTheMachinePartsThemByFullStops) {
  clock.regional.time_separator = ".";
  clock.Set({2011, 1, 20, 10, 11, 12});
  Begin();
  EXPECT_EQ(Cell(kTable, 3, 8), Variant(ToDate({.hour = 10, .minute = 11, .second = 12})));
}

TEST_F(SnapshotDay, BeginsVolumesAnewAtMidnight) {
  Begin();
  Reply({{"MSFT", "28.35", "1500"}, {"IBM"}});
  Pass(15s);
  EXPECT_EQ(Text(kTable, 3, 6), "500");
  clock.Set({2011, 1, 20, 23, 59, 50});
  Reply({{"MSFT", "28.35", "120", "01/21/2011"}, {"IBM"}});
  Pass(15s);
  EXPECT_EQ(Text(kTable, 3, 6), "0") << "nothing is known of the new day yet";
  EXPECT_EQ(Text(kTable, 3, 7).substr(0, 9), "1/21/2011");
  Reply({{"MSFT", "28.35", "170", "01/21/2011"}, {"IBM"}});
  Pass(15s);
  EXPECT_EQ(Text(kTable, 3, 6), "50");
}

TEST_F(SnapshotDay, GoesOnWhenQuoteTrackerDoesNotAnswerForAWhile) {
  Begin();
  reply.reset();
  Pass(45s);
  EXPECT_EQ(QuoteRequests(), 4);
  EXPECT_EQ(told.back(), "QuoteTracker gave no quotes; going on");
  EXPECT_THAT(printed.Text(), HasSubstr("Data retrieval error."));
  EXPECT_EQ(Text(kTable, 3, 2), "28.35") << "what was known stays";
  Reply({{"MSFT", "31"}, {"IBM"}});
  Pass(15s);
  EXPECT_EQ(Text(kTable, 3, 2), "31");
}

TEST_F(SnapshotDay, TellsThatItIsOverAfterOneUpdateAndAsksNoMore) {
  wishes.settings = {{"UpdateEvery", "0"}};
  wishes.ticks.clear();
  bool is_over = false;
  behind_go = [&] { day->Over.Subscribe([&] { is_over = true; }); };
  EXPECT_EQ(Begin(), kAsked);
  EXPECT_TRUE(is_over);
  EXPECT_NO_THROW(day->RaiseFailure());
  day->RunUntil([] { return false; });
  Pass(1h);
  EXPECT_EQ(QuoteRequests(), 1);
}

// As in an office, where the loop goes on while a request waits.
TEST_F(SnapshotDay, AsksNoMoreWhenItIsStoppedWhileItWaits) {
  Begin();
  const auto answer = internet.answer;
  internet.answer = [&](const AnsweringInternet::Request& request) {
    day->Stop();
    return answer(request);
  };
  Reply({{"MSFT", "31"}, {"IBM", "161"}});
  Pass(15s);
  EXPECT_EQ(Text(kTable, 3, 2), "28.35");
  EXPECT_EQ(loop.NextTimer(), std::nullopt);
}

TEST_F(SnapshotDay, BeginsAgainByTheSettingsWithoutTheDialog) {
  Begin();
  day.reset();
  Reply({{"MSFT", "31"}, {"IBM", "161"}});
  day.emplace(loop, sockets, replies, spreadsheet.Application());
  day->TakeSettings();
  day->Start();
  EXPECT_EQ(Text(kTable, 3, 2), "31");
  EXPECT_EQ(day->Source(), "SnapShot( 15 sec)");
}

// A spreadsheet takes such a ticker that is typed for a number, a boolean or a time.
TEST_F(SnapshotDay, AsksForTickersLetterByLetterAsTheyWereNamed) {
  const std::vector<std::string> odd = {"005930", "TRUE", "1E5", "10%", "12:30", "MSFT"};
  wishes.tickers = odd;
  wishes.ticks.clear();
  for (const std::string& ticker : odd) wishes.ticks.push_back({ticker, "Last"});
  Reply({{"005930"}, {"TRUE"}, {"1E5"}, {"10%"}, {"12:30"}, {"MSFT"}});
  Begin();
  EXPECT_EQ(internet.Resources().back(), "/req?GetLastQuote(005930,TRUE,1E5,10%,12:30,MSFT)");
  EXPECT_EQ(Column(kTable, 1), odd);
  for (const std::string& ticker : {"005930", "TRUE", "1E5", "10%", "MSFT"}) {
    SCOPED_TRACE(ticker);
    EXPECT_TRUE(Cell(History(ticker), 1, 2).IsText());
    EXPECT_EQ(Text(History(ticker), 1, 2), ticker);
    EXPECT_THAT(Column(History(ticker), 1), ElementsAre("28.35"));
  }
}

TEST_F(SnapshotDay, FindsTickersThatLookLikeNumbersInTheWorkbookAgain) {
  wishes.tickers = {"005930"};
  wishes.ticks.clear();
  Reply({{"005930"}});
  Begin();
  day.reset();
  wishes.tickers.clear();
  Begin();
  EXPECT_EQ(internet.Resources().back(), "/req?GetLastQuote(005930)");
  EXPECT_THAT(Column(kTable, 1), ElementsAre("005930"));
}

TEST_F(SnapshotDay, FillsTablesOfAnySize) {
  for (const int count : {1, 81, 82, 162}) {
    SCOPED_TRACE(count);
    day.reset();
    spreadsheet = workbook::Spreadsheet::New();
    wishes.ticks.clear();
    wishes.tickers.clear();
    for (int i = 1; i <= count; ++i) wishes.tickers.push_back("T" + std::to_string(i));
    internet.answer = [this](const AnsweringInternet::Request& request) -> std::optional<std::string> {
      const std::string head = "/req?GetLastQuote(";
      if (!request.resource.starts_with(head)) return portfolios(request);
      std::string lines = "OK";
      std::istringstream tickers(
          request.resource.substr(head.size(), request.resource.size() - head.size() - 1));
      for (std::string ticker; std::getline(tickers, ticker, ',');) {
        lines += "\r\n" + Line{ticker, ticker.substr(1)}.Text();
      }
      return lines;
    };
    Begin();
    for (int i = 1; i <= count; ++i) EXPECT_EQ(Text(kTable, i + 2, 2), std::to_string(i));
    EXPECT_TRUE(Cell(kTable, count + 3, 1).IsEmpty());
  }
}

}  // namespace
}  // namespace mirelo::testing
