// What Go takes away, each thing by itself.

#include "person/go_costs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Texts = std::vector<std::string>;

class Costs : public ::testing::Test {
 protected:
  Costs() {
    plan.tickers = {{"MSFT", {}}, {"IBM", {}}};
    plan.columns = {"Ticker", "Last", "Time"};
    plan.vertical_sheet = "Quotes_Vertical";
  }

  std::shared_ptr<host::excel::Worksheet> Sheet(const std::string& name, const std::vector<Texts>& rows) {
    auto sheet = Workbook()->Worksheets()->Add();
    sheet->Name(name);
    for (std::size_t r = 0; r < rows.size(); ++r) {
      for (std::size_t c = 0; c < rows[r].size(); ++c) {
        if (!rows[r][c].empty())
          sheet->Cells(static_cast<std::int32_t>(r + 1), static_cast<std::int32_t>(c + 1))->Value(rows[r][c]);
      }
    }
    return sheet;
  }
  auto QuoteTable(const Texts& tickers = {"MSFT", "IBM"}) {
    std::vector<Texts> rows{{"SnapShot( 60 sec)"}, {"Ticker", "Last", "Time"}};
    for (const std::string& ticker : tickers) rows.push_back({ticker, "28.5", "09:30:00"});
    return Sheet("Dovanta2_Quotes", rows);
  }
  auto History(const Texts& fields) {
    return Sheet("Quotes_Vertical(MSFT)", {{"Ticker:", "MSFT"}, fields, {"28.5", "100"}, {"28.6", "200"}});
  }
  std::shared_ptr<host::excel::Workbook> Workbook() { return spreadsheet.Application()->ActiveWorkbook(); }
  Texts Of(const LossesOfSheet& losses = nullptr) { return GoCosts(*Workbook(), plan, losses); }

  workbook::Spreadsheet spreadsheet = workbook::Spreadsheet::New();
  GoPlan plan;
};

TEST_F(Costs, AreNoneInANewWorkbook) {
  plan.tickers = {{"MSFT", {"Last", "Time"}}};
  EXPECT_THAT(Of(), IsEmpty());
}

TEST_F(Costs, AreNoneForTheSameAgain) {
  QuoteTable();
  History({"Last", "LastVolume"});
  plan.tickers.front().fields = {"Last", "LastVolume"};
  EXPECT_THAT(Of(), IsEmpty());
}

TEST_F(Costs, AreNoneOfATableThatGrowsOrShrinks) {
  QuoteTable({"A", "B", "C", "D"});
  EXPECT_THAT(Of(), IsEmpty());
  plan.columns = {"Ticker"};
  EXPECT_THAT(Of(), IsEmpty());
  plan.columns = {"Ticker", "Last", "Time", "Bid", "Ask"};
  plan.tickers.resize(9, {"X", {}});
  EXPECT_THAT(Of(), IsEmpty());
}

TEST_F(Costs, AreTickersThatTheDialogCannotReadBack) {
  plan.tickers = {{"ELEVENCHARS", {}}, {"TWELVE_CHARS", {}}};
  EXPECT_THAT(Of(),
              ElementsAre("TWELVE_CHARS will be missing when the dialog opens again: it reads tickers of "
                          "up to 11 characters."));
}

TEST_F(Costs, AreTickersOfTheTableThatTheDialogHasNotRead) {
  QuoteTable({"MSFT", "TWELVE_CHARS", "IBM"});
  EXPECT_THAT(Of(),
              ElementsAre("TWELVE_CHARS goes from the quote table: the dialog has not read it, as it has "
                          "more than 11 characters."));
}

TEST_F(Costs, AreHistoriesWhoseFieldsChange) {
  History({"Last", "LastVolume"});
  plan.tickers.front().fields = {"Last", "Bid", "LastVolume"};
  EXPECT_THAT(Of(),
              ElementsAre("The history on Quotes_Vertical(MSFT) is cleared, 2 rows of it, as its fields "
                          "change from Last,LastVolume to Last,Bid,LastVolume."));
  plan.tickers.front().fields = {"last", "LASTVOLUME", "Time"};
  EXPECT_THAT(Of(), ::testing::SizeIs(1)) << "one field more";
  plan.tickers.front().fields = {"Last"};
  EXPECT_THAT(Of(), IsEmpty()) << "one field less";
  plan.tickers.front().fields = {};
  EXPECT_THAT(Of(), IsEmpty()) << "no field at all";
}

TEST_F(Costs, AreNoHistoriesThatHoldNothing) {
  const auto sheet = Sheet("Quotes_Vertical(MSFT)", {{"Ticker:", "MSFT"}, {"Last", "Time"}});
  sheet->Range("A3", "B22")->NumberFormat("0.00");
  plan.tickers.front().fields = {"Bid"};
  EXPECT_THAT(Of(), IsEmpty());
}

TEST_F(Costs, AreNotesInTheWayOfTheTable) {
  const auto sheet = QuoteTable();
  sheet->Range("A7")->Value("total");  // rows 5 to 7 are deleted
  sheet->Range("F6")->Value("my note");
  sheet->Range("F9")->Value("stays");
  sheet->Range("E3")->Value("beside, but not in the way");
  EXPECT_THAT(Of(), ElementsAre("What stands under or beside the quote table is cleared: F6, A7."));
  plan.columns = {"Ticker", "Last", "Time", "Bid", "Ask"};
  EXPECT_THAT(Of(), ElementsAre("What stands under or beside the quote table is cleared: E3, F6, A7."));
}

TEST_F(Costs, AreColumnsOfOnesOwnAmongTheTables) {
  const auto sheet = QuoteTable();
  sheet->Range("B2")->Value("Bought at");
  EXPECT_THAT(Of(), ElementsAre("What stands under or beside the quote table is cleared: B2, B3, B4."));
}

TEST_F(Costs, AreAPersonsWorkOnTheTablesSheet) {
  const auto losses = [](const std::string& sheet) {
    return Texts{sheet + ": 2 formulas", sheet + ": merged cells"};
  };
  EXPECT_THAT(Of(losses), IsEmpty()) << "no such sheet yet";
  QuoteTable();
  EXPECT_THAT(Of(losses), ElementsAre("Dovanta2_Quotes: 2 formulas", "Dovanta2_Quotes: merged cells"));
}

TEST_F(Costs, AreHistoriesThatNoSheetCanBeNamedFor) {
  plan.tickers = {{"RDS/A", {"Last"}}, {"BF:B", {"Last"}}, {"BRK.B", {"Last"}}, {"A/B", {}}};
  EXPECT_THAT(Of(),
              ElementsAre("RDS/A gets no history: no sheet can be named Quotes_Vertical(RDS/A). Go leaves "
                          "an empty sheet in its place.",
                          "BF:B gets no history: no sheet can be named Quotes_Vertical(BF:B). Go leaves an "
                          "empty sheet in its place."));
  plan.vertical_sheet = "A name of a sheet that is long";
  plan.tickers = {{"MSFT", {"Last"}}};
  EXPECT_THAT(Of(), ::testing::SizeIs(1));
}

}  // namespace
}  // namespace mirelo::testing
