// Charts by way of the dialog.

#include "charts/chart_test.h"
#include "worksheet/go_test.h"

namespace mirelo::testing {
namespace {

using Answer = host::Desktop::Answer;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const ScriptedDesktop::Box kQuestion{"Redraw existing charts?", 4, "Dovanta2"};

class GoCharts : public GoTest {
 protected:
  GoCharts() { Columns("Ticker,Last,LastVolume"); }
  ~GoCharts() override { EXPECT_THAT(CallStack(), IsEmpty()); }

  // Go with charts and all fields ticked for these tickers.
  std::int32_t GoWithCharts(
      const Texts& tickers, const Acts& acts = [](frmMirelo&) {}) {
    return Go(tickers, [&](frmMirelo& form) {
      if (form.chkBuildCharts.Value() != 1) {
        form.C1TTickersSettings.UserSelect(kCharting);
        form.chkBuildCharts.UserClick();
        form.C1TTickersSettings.UserSelect(kTickers);
      }
      for (std::int32_t row = 1; row < form.FG.Rows(); ++row) {
        for (std::int32_t col = 2; col < form.FG.Cols(); ++col) form.FG.TextMatrix(row, col, "-1");
      }
      acts(form);
    });
  }
  Texts Titles(const std::string& ticker) {
    return TitlesOn(*Sheets()->Item("Quotes_Vertical(" + ticker + ")"));
  }
};

const Texts kBothTitles{"Last", "LastVolume"};

TEST_F(GoCharts, AreTwoForEachTicker) {
  EXPECT_EQ(GoWithCharts({"MSFT", "IBM"}), 78);
  EXPECT_EQ(Titles("MSFT"), kBothTitles);
  EXPECT_EQ(Titles("IBM"), kBothTitles);
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(GoCharts, AreAskedAboutByASecondGo) {
  GoWithCharts({"MSFT", "IBM"});
  desktop.answers = {Answer::Yes};
  EXPECT_EQ(GoWithCharts({"MSFT", "IBM"}), 78);
  EXPECT_THAT(desktop.boxes, ElementsAre(kQuestion));
  EXPECT_EQ(Titles("MSFT"), kBothTitles);
  EXPECT_EQ(Titles("IBM"), kBothTitles);
}

TEST_F(GoCharts, AreKeptByANoWhichLetsGoEndAsEver) {
  GoWithCharts({"MSFT"});
  const auto sheet = Sheets()->Item("Quotes_Vertical(MSFT)");
  ChartsOn(*sheet)[0]->ChartTitle()->Text("Mine");
  desktop.answers = {Answer::No};
  EXPECT_EQ(GoWithCharts({"MSFT"}), 78);
  EXPECT_THAT(Titles("MSFT"), ElementsAre("Mine", "LastVolume"));
  mGlobal::ErrorHandler().CallStackClear();  // the exit behind the question leaves a name
}

TEST_F(GoCharts, AreMadeForTickersWhoseLastCellIsTicked) {
  EXPECT_EQ(GoWithCharts({"A", "B", "C", "D"},
                         [](frmMirelo& form) {
                           const std::int32_t charts = form.FG.Cols() - 1;
                           form.FG.TextMatrix(2, charts, "0");
                           form.FG.TextMatrix(3, charts, "True");  // does not count here
                         }),
            78);
  EXPECT_EQ(Titles("A"), kBothTitles);
  EXPECT_THAT(Titles("B"), IsEmpty());
  EXPECT_THAT(Titles("C"), IsEmpty());
  EXPECT_EQ(Titles("D"), kBothTitles);
}

TEST_F(GoCharts, AreMadeOfTheTickedFieldsOnly) {
  EXPECT_EQ(GoWithCharts({"A"}, [](frmMirelo& form) { form.FG.TextMatrix(1, 2, "0"); }), 78);
  EXPECT_THAT(Titles("A"), ElementsAre("LastVolume"));
}

TEST_F(GoCharts, AreNotMadeWithoutThatOption) {
  EXPECT_EQ(GoWithCharts({"A"},
                         [](frmMirelo& form) {
                           form.C1TTickersSettings.UserSelect(kCharting);
                           form.chkBuildCharts.UserClick();
                         }),
            78);
  EXPECT_THAT(Titles("A"), IsEmpty());
}

TEST_F(GoCharts, AreNotMadeWithoutATick) {
  EXPECT_EQ(GoWithCharts({"A"}, [](frmMirelo& form) { form.FG.TextMatrix(1, form.FG.Cols() - 1, "0"); }), 78);
  EXPECT_THAT(Titles("A"), IsEmpty());
}

// The whole way: the dialog makes the table and its charts, the macros append rows and call.
TEST_F(GoCharts, FollowTheRowsThatTheMacrosAppend) {
  GoWithCharts({"A"});
  const auto table = Sheets()->Item("Quotes_Vertical(A)");
  for (std::int32_t row = 3; row <= 40; ++row) {
    table->Cells(row, 1)->Value(row);
    table->Cells(row, 2)->Value(row % 7);
  }
  VariantArray rows(1, 1, 1, 2);
  rows(1, 1) = rows(1, 2) = 1.0;
  facade->Update_Charts(table, rows, 20, "Blue", 1, 0);
  const auto charts = ChartsOn(*table);
  ASSERT_THAT(charts, SizeIs(2));
  EXPECT_EQ(RowsShown(*charts[0], *table, 1), RowRange(21, 40));
  EXPECT_EQ(RowsShown(*charts[1], *table, 2), RowRange(21, 40));
}

}  // namespace
}  // namespace mirelo::testing
