// Charts that follow their growing table.

#include "charts/chart_test.h"
#include "dialog/dialog_test.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

// A vertical table behind another sheet, with a chart of each kind over its first rows.
class UpdateCharts : public DialogTest {
 protected:
  static constexpr std::int32_t kPrice = 2;
  static constexpr std::int32_t kVolume = 3;

  UpdateCharts() {
    table = sheets->Item(1);
    table->Name("Quotes_Vertical(A)");
    Headers({"Ticker", "Last", "LastVolume"});
    last = NewChartOf(*application, *table, "B3:B4", "Last", xlLineMarkers);
    volume = NewChartOf(*application, *table, "C3:C4", "LastVolume", xlColumnClustered);
    other = sheets->Add();
    other->Name("Other");
    other->Range("D4")->Select();
  }
  ~UpdateCharts() override { EXPECT_THAT(CallStack(), IsEmpty()); }

  void Headers(const std::vector<std::string>& names) {
    table->Range("A2:Z2")->ClearContents();
    std::int32_t column = 0;
    for (const std::string& name : names) table->Cells(2, ++column)->Value(name);
  }
  // Data from row 3 through this row.
  void DataThrough(std::int32_t row) {
    for (const std::int32_t column : {kPrice, kVolume}) {
      FillColumn(*table, column, std::vector<double>(static_cast<std::size_t>(row - 2), 7));
    }
  }

  // The macros' rows: a time, and how much the quote changed.
  static Variant RowsOf(const std::vector<double>& changes, std::int32_t empty_rows = 0) {
    const auto count = static_cast<std::int32_t>(changes.size());
    VariantArray rows(1, count + empty_rows, 1, 2);
    for (std::int32_t i = 1; i <= count; ++i) {
      rows(i, 1) = "8:36:13 AM";
      rows(i, 2) = changes[static_cast<std::size_t>(i) - 1];
    }
    return rows;
  }

  void Update(const Variant& rows, const std::string& style = "None", std::int32_t points = 20,
              std::int16_t color_points = 0, std::int16_t grey_out = 0) {
    facade->Update_Charts(table, rows, points, style, color_points, grey_out);
  }
  void Update() { Update(RowsOf({0})); }

  std::string Selected() {
    return application->ActiveSheet()->Name() + "!" + application->ActiveCell()->Address(false, false);
  }
  static std::int32_t TitleGround(Chart& chart) {
    return chart.ChartTitle()->Interior()->ColorIndex().ToInt32();
  }

  std::shared_ptr<Application> application = spreadsheet.Application();
  std::shared_ptr<Worksheets> sheets = application->ActiveWorkbook()->Worksheets();
  std::shared_ptr<Worksheet> table;
  std::shared_ptr<Worksheet> other;
  std::shared_ptr<Chart> last;
  std::shared_ptr<Chart> volume;
};

// Rows

TEST_F(UpdateCharts, ShowTheLastRows) {
  const struct {
    std::int32_t data_through;
    RowRange rows;
  } cases[] = {{10, {3, 21}}, {21, {2, 21}}, {22, {3, 22}}, {100, {81, 100}}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.data_through);
    DataThrough(c.data_through);
    Update();
    EXPECT_EQ(RowsShown(*last, *table, kPrice), c.rows);
    EXPECT_EQ(RowsShown(*volume, *table, kVolume), c.rows);
  }
}

TEST_F(UpdateCharts, ShowTheFirstRowsToComeOfAColumnWithoutData) {
  Update();
  EXPECT_EQ(RowsShown(*last, *table, kPrice), RowRange(3, 21));
}

TEST_F(UpdateCharts, FindTheirColumnsWhateverTheHeadersCase) {
  Headers({"Time", "lastvolume", "Bid", "LAST"});
  FillColumn(*table, 2, std::vector<double>(30, 1));
  FillColumn(*table, 4, std::vector<double>(50, 1));
  Update();
  EXPECT_EQ(RowsShown(*last, *table, 4), RowRange(33, 52));
  EXPECT_EQ(RowsShown(*volume, *table, 2), RowRange(13, 32));
}

TEST_F(UpdateCharts, AreKnownByTheirTitlesInAnyCase) {
  last->ChartTitle()->Text("LAST");
  volume->ChartTitle()->Text("lastVOLUME");
  DataThrough(30);
  Update();
  EXPECT_EQ(RowsShown(*last, *table, kPrice), RowRange(11, 30));
  EXPECT_EQ(RowsShown(*volume, *table, kVolume), RowRange(11, 30));
}

TEST_F(UpdateCharts, AreLeftAloneUnderAnotherTitleOrNone) {
  last->ChartTitle()->Text("My chart");
  volume->HasTitle(false);
  DataThrough(30);
  Update(RowsOf({0}), "Blue");
  EXPECT_EQ(RowsShown(*last, *table, kPrice), RowRange(3, 4));
  EXPECT_EQ(RowsShown(*volume, *table, kVolume), RowRange(3, 4));
  EXPECT_NE(TitleGround(*last), 16);
}

TEST_F(UpdateCharts, AreAllThatBearTheTitle) {
  const auto second = NewChartOf(*application, *table, "B3:B4", "Last", xlLineMarkers);
  DataThrough(30);
  Update();
  EXPECT_EQ(RowsShown(*last, *table, kPrice), RowRange(11, 30));
  EXPECT_EQ(RowsShown(*second, *table, kPrice), RowRange(11, 30));
}

// Comments float over the sheet as charts do.
TEST_F(UpdateCharts, AreFoundBetweenOtherShapes) {
  table->Range("B2")->AddComment("Charts (Last & Volume)");
  DataThrough(30);
  Update();
  EXPECT_EQ(RowsShown(*last, *table, kPrice), RowRange(11, 30));
}

TEST_F(UpdateCharts, NeedNoColumnUnlessTheyAreThere) {
  table->Shapes()->Item(2)->Delete();
  Headers({"Ticker", "Last"});
  DataThrough(30);
  Update();
  EXPECT_EQ(RowsShown(*last, *table, kPrice), RowRange(11, 30));
}

// Colours

TEST_F(UpdateCharts, ArePaintedByTheLastTwoChanges) {
  const struct {
    std::vector<double> changes;
    std::int32_t title;  // by the change before the last
    PointLook series;    // by the last change
  } cases[] = {
      {{1, -1}, 10, kFall}, {{-1, 1}, 53, kRise}, {{5, 0, 1}, 16, kRise},
      {{1, 0}, 10, kStay},  {{1}, 16, kRise},  // nothing before it
  };
  DataThrough(30);
  for (const auto& c : cases) {
    for (const std::int32_t empty_rows : {0, 3}) {
      SCOPED_TRACE(::testing::PrintToString(c.changes));
      Update(RowsOf(c.changes, empty_rows), "Green");
      for (const auto& chart : {last, volume}) {
        EXPECT_EQ(TitleGround(*chart), c.title);
        EXPECT_EQ(LookOf(*chart->SeriesCollection(1)), c.series);
      }
    }
  }
}

TEST_F(UpdateCharts, ArePaintedPointByPointWhenThatIsWanted) {
  FillColumn(*table, kPrice, {5, 5, 6, 6, 4});
  FillColumn(*table, kVolume, {1, 1, 1, 1, 1});
  Update(RowsOf({0}), "Blue", 5, 1, 0);
  EXPECT_THAT(PointsOf(*last), ElementsAre(kStay, kStay, kRise, kRise, kFall));
  Update(RowsOf({0}), "Blue", 5, 1, 1);
  EXPECT_THAT(PointsOf(*last), ElementsAre(kStay, kStay, kRise, kStay, kFall));
}

TEST_F(UpdateCharts, KeepTheirColorsWithoutAStyle) {
  DataThrough(30);
  Update(RowsOf({1}), "Blue");
  Update(RowsOf({-1, -1}), "None");
  EXPECT_EQ(TitleGround(*last), 16);
  EXPECT_EQ(LookOf(*last->SeriesCollection(1)), kRise);
}

TEST_F(UpdateCharts, TakeAStyleOfAnotherNameForOneAndReportIt) {
  DataThrough(30);
  Answers({"ABORT", "ABORT"});
  Update(RowsOf({1}), "none");
  EXPECT_THAT(ReportedErrors(), ElementsAre(9, 9));  // once a chart
  EXPECT_THAT(ReportedRoutines(), Each("Mirelo.cMirelo.Change_Colors"));
  EXPECT_EQ(RowsShown(*volume, *table, kVolume), RowRange(11, 30));
}

// A change that cannot be read counts for nothing.
TEST_F(UpdateCharts, ArePaintedAsUnchangedByRowsWithoutChanges) {
  DataThrough(30);
  VariantArray words(1, 2, 1, 2);
  words(1, 1) = words(1, 2) = "x";
  words(2, 1) = words(2, 2) = "y";
  Update(words, "Blue");
  EXPECT_EQ(TitleGround(*last), 16);
  EXPECT_EQ(LookOf(*last->SeriesCollection(1)), kStay);

  VariantArray narrow(1, 2, 1, 1);
  narrow(1, 1) = 1;
  Update(narrow, "Blue");
  EXPECT_EQ(LookOf(*last->SeriesCollection(1)), kStay);
}

// The walk up the rows ends on the first of them, filled or not.
TEST_F(UpdateCharts, ArePaintedByTheFirstRowWhenNoneIsFilled) {
  DataThrough(30);
  VariantArray rows(1, 3, 1, 2);
  rows(1, 2) = 1.0;
  rows(3, 2) = -1.0;
  Update(rows, "Blue");
  EXPECT_EQ(TitleGround(*last), 16);
  EXPECT_EQ(LookOf(*last->SeriesCollection(1)), kRise);
}

// Rows that are counted from 0 have none before row 1.
TEST_F(UpdateCharts, TakeNoEarlierChangeFromARowZero) {
  DataThrough(30);
  VariantArray rows(0, 1, 1, 2);
  rows(0, 1) = rows(1, 1) = "8:36:13 AM";
  rows(0, 2) = -1.0;
  rows(1, 2) = 1.0;
  Update(rows, "Blue");
  EXPECT_EQ(TitleGround(*last), 16);
  EXPECT_EQ(LookOf(*last->SeriesCollection(1)), kRise);
}

// Selection

TEST_F(UpdateCharts, LeaveTheSheetAndTheCellSelectedThatWere) {
  DataThrough(30);
  Update();
  EXPECT_EQ(Selected(), "Other!D4");
}

TEST_F(UpdateCharts, LeaveTheCellOfTheTableSelected) {
  table->Select();
  table->Range("B7")->Select();
  Update();
  EXPECT_EQ(Selected(), "Quotes_Vertical(A)!B7");
}

// The sheet in front is looked for among the worksheets to measure it.
TEST_F(UpdateCharts, FailBehindAChartSheet) {
  const auto chart_sheet = application->ActiveWorkbook()->Charts()->Add();
  EXPECT_EQ(NumberOf([&] { Update(); }), 9);
  EXPECT_EQ(application->ActiveSheet()->Name(), chart_sheet->Name());
}

// Failures are the caller's, without a word and without a place on the call stack.

TEST_F(UpdateCharts, HaveNoPlaceOnTheCallStack) {
  DataThrough(30);
  EXPECT_THAT(Traces([&] { Update(); }), IsEmpty());
  EXPECT_THAT(Traces([&] { Update(RowsOf({1}), "Blue"); }), Not(Contains(HasSubstr("Update_Charts"))));
}

TEST_F(UpdateCharts, FailForAChartWhoseColumnTheTableLacksWithItsSheetInFront) {
  const struct {
    const char* name;
    std::vector<std::string> headers;
    RowRange rows_of_last;  // the charts before that one are up to date
  } cases[] = {
      {"no price", {"Ticker", "Bid", "LastVolume"}, {3, 4}},
      {"no volume", {"Ticker", "Last", "Volume"}, {11, 30}},
      {"neither", {"Ticker"}, {3, 4}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    other->Select();
    last->SeriesCollection(1)->Values(table->Range("B3:B4"));
    Headers(c.headers);
    DataThrough(30);
    EXPECT_EQ(NumberOf([&] { Update(); }), 1004);
    EXPECT_EQ(application->ActiveSheet()->Name(), table->Name());
    EXPECT_EQ(RowsShown(*last, *table, kPrice), c.rows_of_last);
  }
}

TEST_F(UpdateCharts, FailForRowsThatAreNoArrayWithItsSheetInFront) {
  const struct {
    const char* name;
    Variant rows;
    std::int32_t error;
  } cases[] = {
      {"empty", Variant(), 13},
      {"a text", "rows", 13},
      {"an array without rows", VariantArray(), 9},
      {"an array of one dimension", VariantArray(1, 3), 9},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    other->Select();
    EXPECT_EQ(NumberOf([&] { Update(c.rows); }), c.error);
    EXPECT_EQ(application->ActiveSheet()->Name(), table->Name());
  }
}

TEST_F(UpdateCharts, FailWithoutATable) {
  EXPECT_EQ(NumberOf([&] { facade->Update_Charts(nullptr, RowsOf({0}), 20, "None", 0, 0); }), 91);
  EXPECT_EQ(Selected(), "Other!D4");
}

TEST_F(UpdateCharts, FailWithoutASpreadsheet) {
  facade->m_ObjExcelApplication(nullptr);
  EXPECT_EQ(NumberOf([&] { Update(); }), 91);
}

// Points that no sheet has: the range cannot be set, which is passed over.
TEST_F(UpdateCharts, StayAsTheyAreForMorePointsThanTheSheetHasRows) {
  DataThrough(30);
  Update(RowsOf({1}), "Blue", 2'000'000);
  EXPECT_EQ(LookOf(*last->SeriesCollection(1)), kRise);
  EXPECT_EQ(RowsShown(*last, *table, kPrice), RowRange(3, 4));
}

}  // namespace
}  // namespace mirelo::testing
