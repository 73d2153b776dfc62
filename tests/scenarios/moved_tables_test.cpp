// A day of streamed quotes in a workbook in which somebody moves the tables about meanwhile.

#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "automation/runtime_error.h"
#include "host/excel/application.h"
#include "host/excel/constants.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "scenarios/day_rig.h"
#include "support/error_number.h"
#include "support/level1_wire.h"

namespace mirelo::testing {
namespace {

namespace excel = host::excel;
using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

class MovedTables : public Day {
 protected:
  MovedTables() {
    wishes.tickers = {"MSFT", "IBM"};
    wishes.columns = {"Ticker", "Last", "Bid", "Volume"};
    wishes.settings = {{"UpdateEvery", "1"},
                       {"Seconds", "0"},
                       {"ComQuoteSource", "Alpstein Finance (delayed)"},
                       {"VerticalTable", "1"},
                       {"RowsLimit", "0"}};
    wishes.ticks = {{"MSFT", "Last"}, {"MSFT", "Volume"}};
  }

  void BeginStreaming() {
    Begin();
    for (const char* message : {"OK<CONNECT>QuoteTracker</CONNECT><SERVERTIME>09:30</SERVERTIME>",
                                "LO<STATUSCODE>0</STATUSCODE>", "OK<STREAMER>SWISS.SDF</STREAMER>"})
      winsock.Newest().Deliver(std::string_view(message));
  }
  // A quote, and the moment until it stands in the sheets.
  void Quote(const char* ticker, double last, std::int64_t volume) {
    Deliver(ticker, last, volume);
    Pass(1s);
  }
  void Deliver(const char* ticker, double last, std::int64_t volume) {
    const auto record = Level1Wire().Symbol(ticker).Last(last).Volume(volume).Stamp("01202011093000");
    winsock.Newest().Deliver(record.Bytes());
  }

  std::shared_ptr<excel::Worksheet> Sheet(const std::string& name) {
    return spreadsheet.Application()->Worksheets()->Item(name);
  }
  // What somebody does at the sheet, who is heard of as an office tells it.
  void InsertRows(const std::string& sheet, std::int32_t row, std::int32_t count) {
    const auto cells = Sheet(sheet)->Cells(row, 1)->Resize(kRows, kColumns);
    const Variant values = cells->Value();
    cells->ClearContents();
    Sheet(sheet)->Cells(row + count, 1)->Resize(kRows, kColumns)->Value(values);
    day->LookAgain();
  }
  void DeleteRow(const std::string& sheet, std::int32_t row) {
    Sheet(sheet)->Cells(row, 1)->EntireRow()->Delete(excel::xlShiftUp);
    day->LookAgain();
  }
  void DeleteColumn(const std::string& sheet, std::int32_t column) {
    const Variant values = Sheet(sheet)->Cells(1, column + 1)->Resize(kRows, kColumns)->Value();
    Sheet(sheet)->Cells(1, column)->Resize(kRows, kColumns)->Value(values);
    day->LookAgain();
  }
  void Type(const std::string& sheet, std::int32_t row, std::int32_t column, const Variant& value) {
    Sheet(sheet)->Cells(row, column)->Value(value);
    day->LookAgain();
  }
  std::vector<std::string> Row(const std::string& sheet, std::int32_t row, std::int32_t count) {
    std::vector<std::string> texts;
    for (std::int32_t column = 1; column <= count; ++column) texts.push_back(Text(sheet, row, column));
    return texts;
  }

  static constexpr std::int32_t kRows = 12;
  static constexpr std::int32_t kColumns = 8;
};

TEST_F(MovedTables, GetQuotesBelowRowsThatAreInsertedAboveThem) {
  BeginStreaming();
  InsertRows(kTable, 1, 3);
  Quote("IBM", 180, 700);
  EXPECT_THAT(Row(kTable, 7, 4), ElementsAre("IBM", "180", "", "700"));
  EXPECT_THAT(Row(kTable, 4, 4), Not(Contains("180")));
  EXPECT_EQ(Text(kTable, 5, 1), "Ticker");
}

TEST_F(MovedTables, GetQuotesAboveRowsThatAreDeleted) {
  BeginStreaming();
  DeleteRow(kTable, 1);
  Quote("MSFT", 28.5, 100);
  EXPECT_THAT(Row(kTable, 1, 4), ElementsAre("Ticker", "Last", "Bid", "Volume"));
  EXPECT_THAT(Row(kTable, 2, 4), ElementsAre("MSFT", "28.5", "", "100"));
  EXPECT_EQ(day->Source(), "");
}

TEST_F(MovedTables, GetQuotesInTheirOwnColumnsWhenOneIsDeleted) {
  BeginStreaming();
  Type(kTable, 3, 5, "my note");
  DeleteColumn(kTable, 3);
  Quote("MSFT", 28.5, 100);
  EXPECT_THAT(Row(kTable, 3, 4), ElementsAre("MSFT", "28.5", "100", "my note"));
}

TEST_F(MovedTables, GetNothingUnderACaptionThatIsSomebodysOwn) {
  BeginStreaming();
  Type(kTable, 2, 3, "Mine");
  Type(kTable, 3, 3, "kept");
  Quote("MSFT", 28.5, 100);
  EXPECT_THAT(Row(kTable, 3, 4), ElementsAre("MSFT", "28.5", "kept", "100"));
  Type(kTable, 2, 3, "Bid");
  Quote("MSFT", 28.6, 101);
  EXPECT_THAT(Row(kTable, 3, 4), ElementsAre("MSFT", "28.6", "", "101"));
}

TEST_F(MovedTables, GetQuotesBesideTheirTickersWhenTheRowsAreSorted) {
  BeginStreaming();
  Type(kTable, 3, 1, "IBM");
  Type(kTable, 4, 1, "MSFT");
  Deliver("MSFT", 28.5, 100);
  Quote("IBM", 180, 700);
  EXPECT_THAT(Row(kTable, 3, 4), ElementsAre("IBM", "180", "", "700"));
  EXPECT_THAT(Row(kTable, 4, 4), ElementsAre("MSFT", "28.5", "", "100"));
}

TEST_F(MovedTables, GetQuotesUnderTheTickersCaptionWhateverItIs) {
  BeginStreaming();
  Type(kTable, 2, 1, "Symbol");
  Quote("MSFT", 28.5, 100);
  EXPECT_THAT(Row(kTable, 3, 4), ElementsAre("MSFT", "28.5", "", "100"));
}

TEST_F(MovedTables, GetNothingForATickerThatIsGoneAndAgainWhenItIsBack) {
  BeginStreaming();
  Type(kTable, 3, 1, "AAPL");
  Quote("MSFT", 28.5, 100);
  EXPECT_EQ(Text(kTable, 3, 2), "");
  EXPECT_THAT(told, Contains("The quote table has no row of MSFT any more"));
  Type(kTable, 3, 1, "MSFT");
  Quote("MSFT", 28.6, 101);
  EXPECT_EQ(Text(kTable, 3, 2), "28.6");
}

TEST_F(MovedTables, EndTheDayWhenTheQuoteTableIsGone) {
  BeginStreaming();
  Sheet(kTable)->Cells()->Clear();
  day->LookAgain();
  Quote("MSFT", 28.5, 100);
  const RuntimeError error = ErrorOf([&] { day->RunUntil([] { return true; }); });
  EXPECT_THAT(error.Description(),
              HasSubstr("The quote table is no longer on the sheet \"Dovanta2_Quotes\""));
  EXPECT_EQ(Text(kTable, 3, 2), "");
}

TEST_F(MovedTables, GrowAtTheFootOfAHistoryWhoseRowsAreMoved) {
  BeginStreaming();
  Quote("MSFT", 28.1, 1);
  Quote("MSFT", 28.2, 2);
  InsertRows(History("MSFT"), 1, 2);
  Quote("MSFT", 28.3, 3);
  DeleteRow(History("MSFT"), 5);
  Quote("MSFT", 28.4, 4);
  EXPECT_EQ(Text(History("MSFT"), 4, 1), "Last");
  EXPECT_EQ(Text(History("MSFT"), 5, 1), "28.2");
  EXPECT_EQ(Text(History("MSFT"), 6, 1), "28.3");
  EXPECT_EQ(Text(History("MSFT"), 7, 1), "28.4");
  EXPECT_EQ(Text(History("MSFT"), 7, 2), "4");
}

TEST_F(MovedTables, GrowInTheirOwnColumnsWhenAHistorysFieldIsDeleted) {
  BeginStreaming();
  Quote("MSFT", 28.1, 1);
  Type(History("MSFT"), 3, 3, "my note");
  DeleteColumn(History("MSFT"), 1);
  Quote("MSFT", 28.2, 2);
  EXPECT_THAT(Row(History("MSFT"), 4, 2), ElementsAre("2", ""));
  EXPECT_EQ(Text(History("MSFT"), 3, 2), "my note");
}

TEST_F(MovedTables, KeepTheLimitOfAHistoryWhoseRowsAreDeleted) {
  wishes.settings.back() = {"RowsLimit", "3"};
  BeginStreaming();
  for (int i = 1; i <= 3; ++i) Quote("MSFT", 28 + i / 10.0, i);
  DeleteRow(History("MSFT"), 4);
  Quote("MSFT", 28.4, 4);
  EXPECT_THAT(Column(History("MSFT"), 1), ElementsAre("28.1", "28.3", "28.4"));
  Quote("MSFT", 28.5, 5);
  EXPECT_THAT(Column(History("MSFT"), 1), ElementsAre("28.3", "28.4", "28.5"));
}

TEST_F(MovedTables, LeaveAHistoryAloneThatIsCleared) {
  BeginStreaming();
  Quote("MSFT", 28.1, 1);
  Sheet(History("MSFT"))->Cells()->Clear();
  day->LookAgain();
  Quote("MSFT", 28.2, 2);
  EXPECT_THAT(Row(History("MSFT"), 3, 2), ElementsAre("", ""));
  EXPECT_THAT(Row(History("MSFT"), 4, 2), ElementsAre("", ""));
  EXPECT_EQ(Text(kTable, 3, 2), "28.2");
}

}  // namespace
}  // namespace mirelo::testing
