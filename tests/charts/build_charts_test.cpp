// The charts of the vertical tables.

#include "charts/build_test.h"
#include "host/excel/interior.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class BuildCharts : public BuildTest {
 protected:
  ~BuildCharts() override { EXPECT_THAT(CallStack(), IsEmpty()); }
};

TEST_F(BuildCharts, EntersItsRoutinesUnderTheirNames) {
  OpenForCharts("Last");
  Save("ChartStyle", "Blue");
  EXPECT_THAT(Traces([this] { form.Build_Charts(Variant()); }),
              ElementsAre("Entered Mirelo.frmMirelo.Build_Charts", "Exited Mirelo.frmMirelo.Build_Charts"));
  const auto traces = Traces([this] { Build({"A"}); });
  Texts entered;
  for (const std::string& trace : traces) {
    if (trace.starts_with("Entered ")) entered.push_back(trace.substr(trace.rfind('.') + 1));
  }
  EXPECT_THAT(entered, ElementsAre("Build_Charts", "GiveSheetLimits", "Arr_Count", "GotoLastCell",
                                   "Arr_Search", "Add_Chart", "Move_And_Resize_Chart", "Change_Colors",
                                   "Load_Colors", "Arr_Search"));
  EXPECT_EQ(traces.back(), "Exited Mirelo.frmMirelo.Build_Charts");
}

TEST_F(BuildCharts, MakesALineOfThePricesAndColumnsOfTheVolumesForEachTicker) {
  OpenForCharts();
  Build({"A", "C"});
  for (const char* ticker : {"A", "C"}) {
    EXPECT_EQ(Titles(ticker), kBoth);
    EXPECT_EQ(Charts(ticker)[0]->ChartType(), xlLineMarkers);
    EXPECT_EQ(Charts(ticker)[1]->ChartType(), xlColumnClustered);
  }
  EXPECT_THAT(Charts("B"), IsEmpty());
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(BuildCharts, TakesAnArrayOfAnyBounds) {
  OpenForCharts();
  VariantArray tickers(7, 8);
  tickers(7) = "B";
  tickers(8) = "A";
  form.Build_Charts(tickers);
  EXPECT_EQ(Titles("A"), kBoth);
  EXPECT_EQ(Titles("B"), kBoth);
}

TEST_F(BuildCharts, UsesTheNameThatTheUserChoseForVerticalSheets) {
  OpenForCharts();
  Table("A")->Name("My history(A)");
  Save("txtVerticalSheet", "My history");
  Build({"A"});
  EXPECT_EQ(TitlesOn(*sheets->Item("My history(A)")), kBoth);
}

// Nothing to do

TEST_F(BuildCharts, DoesNothingWithoutTickers) {
  OpenForCharts();
  Build({"A"});
  form.Build_Charts(Variant());
  form.Build_Charts(VariantArray());
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_THAT(Charts("A"), SizeIs(2));
}

TEST_F(BuildCharts, DoesNothingWithoutVerticalTables) {
  OpenForCharts();
  form.chkVerTable.Value(0);
  Build({"A"});
  EXPECT_THAT(Charts("A"), IsEmpty());
}

// Columns

TEST_F(BuildCharts, FindsTheColumnsWhateverTheirHeadersCase) {
  OpenForCharts();
  AddTable("D", {"lastVOLUME", "Bid", "LAST"});
  Build({"D"});
  ASSERT_EQ(Titles("D"), kBoth);
  EXPECT_EQ(RowsShown(*Charts("D")[0], *Table("D"), 3), RowRange(3, 21));
  EXPECT_EQ(RowsShown(*Charts("D")[1], *Table("D"), 1), RowRange(3, 21));
}

TEST_F(BuildCharts, MakesNoChartOfAColumnThatTheTableLacks) {
  OpenForCharts();
  AddTable("D", {"Ticker", "Bid", "LastVolume"});
  AddTable("E", {"Ticker", "Last", "Volume"});
  AddTable("F", {"Ticker", "Bid", "Ask"});
  Build({"D", "E", "F", "A"});
  EXPECT_THAT(Titles("D"), ElementsAre("LastVolume"));
  EXPECT_THAT(Titles("E"), ElementsAre("Last"));
  EXPECT_THAT(Titles("F"), IsEmpty());
  EXPECT_EQ(Titles("A"), kBoth);
}

TEST_F(BuildCharts, MakesNoChartOfAFieldThatTheDialogDoesNotOffer) {
  OpenForCharts("Bid,LastVolume");
  Build({"A"});
  EXPECT_THAT(Titles("A"), ElementsAre("LastVolume"));
}

TEST_F(BuildCharts, TellsTheFieldsOfTheDialogByTheirExactNames) {
  OpenForCharts("LAST,LastVolume");
  Build({"A"});
  EXPECT_THAT(Titles("A"), ElementsAre("LastVolume"));
}

TEST_F(BuildCharts, FindsColumnsOnlyBeforeTheFirstGapOfTheHeaders) {
  OpenForCharts();
  AddTable("D", {"Ticker", "Last", "Bid", "", "LastVolume"});
  Build({"D"});
  EXPECT_THAT(Titles("D"), ElementsAre("Last"));
}

// Rows

TEST_F(BuildCharts, ShowsTheLastRowsOrThoseToCome) {
  const struct {
    std::size_t data_rows;
    RowRange rows;
  } cases[] = {{0, {3, 6}}, {1, {3, 6}}, {4, {3, 6}}, {5, {3, 7}}, {6, {4, 8}}, {50, {48, 52}}};
  OpenForCharts();
  Save("ChartPoints", 5);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.data_rows);
    const auto table = AddTable("R" + std::to_string(c.data_rows));
    table->Range("B3:C100")->ClearContents();
    FillColumn(*table, kPrice, std::vector<double>(c.data_rows, 7));
    FillColumn(*table, kVolume, std::vector<double>(c.data_rows, 7));
    Build({"R" + std::to_string(c.data_rows)});
    const auto charts = ChartsOn(*table);
    ASSERT_THAT(charts, SizeIs(2));
    EXPECT_EQ(RowsShown(*charts[0], *table, kPrice), c.rows);
    EXPECT_EQ(RowsShown(*charts[1], *table, kVolume), c.rows);
  }
}

// Places

TEST_F(BuildCharts, StackBesideTheTable) {
  OpenForCharts();
  Build({"A"});
  const auto shapes = ChartShapesOn(*Table("A"));
  ASSERT_THAT(shapes, SizeIs(2));
  EXPECT_NEAR(shapes[0]->Left(), Table("A")->Range("D1")->Left(), 0.5);
  EXPECT_NEAR(shapes[0]->Top(), 0, 0.5);
  EXPECT_NEAR(shapes[1]->Left(), shapes[0]->Left(), 0.5);
  EXPECT_NEAR(shapes[1]->Top(), shapes[0]->Top() + 76, 0.5);
  EXPECT_NEAR(shapes[1]->Width(), 200, 0.5);
}

TEST_F(BuildCharts, StandBehindTheLastColumnThatIsUsed) {
  OpenForCharts();
  Table("A")->Range("G7")->Value("note");
  Build({"A"});
  EXPECT_NEAR(ChartShapesOn(*Table("A"))[0]->Left(), Table("A")->Range("H1")->Left(), 0.5);
}

TEST_F(BuildCharts, AreAsWideAsTheirPoints) {
  OpenForCharts();
  Save("ChartPoints", 45);
  Build({"A"});
  EXPECT_NEAR(ChartShapesOn(*Table("A"))[0]->Width(), 450, 0.5);
}

// Settings

TEST_F(BuildCharts, HaveAValueAxisWhenThatIsWanted) {
  OpenForCharts();
  Build({"A"});
  Save("AddYAxis", 1);
  Build({"B"});
  EXPECT_FALSE(Charts("A")[0]->HasAxis(xlValue, xlPrimary));
  EXPECT_TRUE(Charts("B")[0]->HasAxis(xlValue, xlPrimary));
  EXPECT_FALSE(Charts("B")[0]->HasAxis(xlCategory, xlPrimary));
}

TEST_F(BuildCharts, ArePaintedInTheirStyle) {
  OpenForCharts();
  Save("ChartStyle", "Green");
  FillColumn(*Table("A"), kPrice, {5, 5, 6, 6, 4});
  Save("ChartPoints", 5);
  Table("A")->Range("B8:B100")->ClearContents();
  Build({"A"});
  for (const auto& chart : Charts("A")) {
    EXPECT_EQ(chart->ChartArea()->Fill()->ForeColor()->SchemeColor(), 10);
    EXPECT_EQ(chart->PlotArea()->Fill()->BackColor()->SchemeColor(), 35);
    EXPECT_EQ(chart->ChartTitle()->Interior()->ColorIndex().ToInt32(), 16);
  }
  EXPECT_THAT(PointsOf(*Charts("A")[0]), ElementsAre(kStay, kStay, kRise, kRise, kFall));
}

TEST_F(BuildCharts, AreGreyWhereFlatWhenThatIsWanted) {
  OpenForCharts();
  Save("ChartStyle", "Blue");
  Save("GreyOut", 1);
  Save("ChartPoints", 5);
  FillColumn(*Table("A"), kPrice, {5, 5, 6, 6, 4});
  Table("A")->Range("B8:B100")->ClearContents();
  Build({"A"});
  EXPECT_THAT(PointsOf(*Charts("A")[0]), ElementsAre(kStay, kStay, kRise, kStay, kFall));
}

TEST_F(BuildCharts, ArePaintedAsUnchangedWithoutColoredPoints) {
  OpenForCharts();
  Save("ChartStyle", "Blue");
  Save("ColorPoints", 0);
  Build({"A"});
  EXPECT_THAT(PointsOf(*Charts("A")[0]), Each(kStay));
}

TEST_F(BuildCharts, ArePaintedBlueWithTwentyColoredPointsByDefault) {
  OpenWithSettings();
  for (const char* key : {"ChartStyle", "ChartPoints", "ColorPoints", "GreyOut", "AddYAxis"}) {
    ASSERT_TRUE(Stored("Settings", key).IsEmpty()) << key;
  }
  FillColumn(*Table("A"), kPrice, std::vector<double>(30, 1));
  FillColumn(*Table("A"), kPrice, {2, 2}, 31);  // rows 31 and 32
  Build({"A"});
  EXPECT_EQ(Charts("A")[0]->ChartArea()->Fill()->ForeColor()->SchemeColor(), 47);
  EXPECT_FALSE(Charts("A")[0]->HasAxis(xlValue, xlPrimary));
  const auto points = PointsOf(*Charts("A")[0]);
  ASSERT_THAT(points, SizeIs(20));
  EXPECT_EQ(points[17], kStay);
  EXPECT_EQ(points[18], kRise);
  EXPECT_EQ(points[19], kRise);
}

TEST_F(BuildCharts, KeepTheSpreadsheetsColorsWithoutAStyle) {
  OpenForCharts();
  Build({"A"});
  EXPECT_NE(Charts("A")[0]->ChartTitle()->Interior()->ColorIndex().ToInt32(), 16);
  EXPECT_NE(Charts("A")[0]->SeriesCollection(1)->MarkerStyle(), xlMarkerStyleDiamond);
}

}  // namespace
}  // namespace mirelo::testing
