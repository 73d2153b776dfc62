// A chart as it is painted.

#include "charts/chart_test.h"
#include "dialog/dialog_test.h"
#include "host/excel/font.h"
#include "host/excel/interior.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ChangeColors : public DialogTest {
 protected:
  ~ChangeColors() override { EXPECT_THAT(CallStack(), IsEmpty()); }

  // A chart of these values, with a title.
  std::shared_ptr<Chart> ChartOf(const std::vector<double>& values, XlChartType type = xlLineMarkers) {
    sheet->Range("A3:A100")->ClearContents();
    FillColumn(*sheet, 1, values);
    return NewChartOf(*application, *sheet, "A3:A" + std::to_string(values.size() + 2), "Last", type);
  }

  std::shared_ptr<Application> application = spreadsheet.Application();
  std::shared_ptr<Worksheet> sheet = application->ActiveWorkbook()->Worksheets()->Item(1);
};

TEST_F(ChangeColors, HasARoutineForThePaintingAndOneForTheList) {
  const auto chart = ChartOf({1, 2});
  EXPECT_THAT(Traces([&] { facade->Change_Colors(chart, 0, 0, "Blue"); }),
              ElementsAre("Entered Mirelo.cMirelo.Change_Colors", "Entered Mirelo.cMirelo.Load_Colors",
                          "Exited Mirelo.cMirelo.Load_Colors", "Exited Mirelo.cMirelo.Change_Colors"));
}

TEST_F(ChangeColors, AnswersAnEmptyVariant) {
  EXPECT_TRUE(facade->Change_Colors(ChartOf({1, 2}), 0, 0, "Blue").IsEmpty());
}

TEST_F(ChangeColors, DoesNothingForANullChart) {
  EXPECT_THAT(Traces([&] { EXPECT_TRUE(facade->Change_Colors(nullptr, 1, 1, "Blue").IsEmpty()); }),
              ElementsAre("Entered Mirelo.cMirelo.Change_Colors", "Exited Mirelo.cMirelo.Change_Colors"));
}

// Ground and title

TEST_F(ChangeColors, PaintsTheGroundInTheColorsOfTheStyle) {
  const struct {
    const char* style;
    std::int32_t area_fore, area_back, plot_fore, plot_back;
  } cases[] = {{"Blue", 47, 47, 17, 24}, {"Green", 10, 10, 50, 35}, {"Yellow", 16, 16, 48, 36}};
  const auto chart = ChartOf({1, 2});
  for (const auto& c : cases) {
    SCOPED_TRACE(c.style);
    chart->ChartArea()->Fill()->Visible(msoFalse);
    chart->PlotArea()->Fill()->Visible(msoFalse);
    facade->Change_Colors(chart, 0, 0, c.style);
    EXPECT_EQ(chart->ChartArea()->Fill()->Visible(), msoTrue);
    EXPECT_EQ(chart->ChartArea()->Fill()->ForeColor()->SchemeColor(), c.area_fore);
    EXPECT_EQ(chart->ChartArea()->Fill()->BackColor()->SchemeColor(), c.area_back);
    EXPECT_EQ(chart->PlotArea()->Fill()->Visible(), msoTrue);
    EXPECT_EQ(chart->PlotArea()->Fill()->ForeColor()->SchemeColor(), c.plot_fore);
    EXPECT_EQ(chart->PlotArea()->Fill()->BackColor()->SchemeColor(), c.plot_back);
  }
}

TEST_F(ChangeColors, PaintsTheTitleByTheChangeOfTheDay) {
  const struct {
    double today;
    std::int32_t ground;
  } cases[] = {{0.5, 10}, {-0.5, 53}, {0, 16}};
  const auto chart = ChartOf({1, 2});
  for (const auto& c : cases) {
    SCOPED_TRACE(c.today);
    facade->Change_Colors(chart, -c.today, c.today, "Blue");
    EXPECT_EQ(chart->ChartTitle()->Interior()->ColorIndex().ToInt32(), c.ground);
    EXPECT_EQ(chart->ChartTitle()->Font()->ColorIndex().ToInt32(), 6);
  }
}

// The series

TEST_F(ChangeColors, GivesTheSeriesALineWithDiamonds) {
  const auto chart = ChartOf({1, 2});
  const auto series = chart->SeriesCollection(1);
  series->Smooth(true);
  series->Shadow(true);
  facade->Change_Colors(chart, 0, 0, "Blue");
  EXPECT_EQ(series->Border()->Weight().ToInt32(), xlMedium);
  EXPECT_EQ(series->Border()->LineStyle().ToInt32(), xlContinuous);
  EXPECT_EQ(series->MarkerStyle(), xlMarkerStyleDiamond);
  EXPECT_EQ(series->MarkerSize(), 6);
  EXPECT_FALSE(series->Smooth());
  EXPECT_FALSE(series->Shadow());
}

TEST_F(ChangeColors, PaintsTheWholeSeriesByTheLastChange) {
  const struct {
    double now;
    PointLook look;
  } cases[] = {{0.5, kRise}, {-0.5, kFall}, {0, kStay}};
  for (const XlChartType type : {xlLineMarkers, xlColumnClustered}) {
    for (const std::int16_t color_points : {std::int16_t{0}, std::int16_t{2}, std::int16_t{-1}}) {
      const auto chart = ChartOf({5, 6, 4}, type);
      for (const auto& c : cases) {
        SCOPED_TRACE(c.now);
        facade->Change_Colors(chart, c.now, 0, "Blue", color_points, 1);
        EXPECT_EQ(LookOf(*chart->SeriesCollection(1)), c.look);
        EXPECT_THAT(PointsOf(*chart), Each(c.look));
      }
    }
  }
}

// Points one by one

TEST_F(ChangeColors, PaintsPointsByTheirStepUnlessToldOtherwise) {
  const auto chart = ChartOf({5, 6, 4});
  facade->Change_Colors(chart, 1, 1, "Blue");
  EXPECT_THAT(PointsOf(*chart), ElementsAre(kStay, kRise, kFall));
}

TEST_F(ChangeColors, KeepsTheColorsOfAStepAlongAFlatStretch) {
  const auto chart = ChartOf({5, 5, 6, 6, 4});
  facade->Change_Colors(chart, 0, 0, "Blue", 1, 0);
  EXPECT_THAT(PointsOf(*chart), ElementsAre(kStay, kStay, kRise, kRise, kFall));
}

TEST_F(ChangeColors, GreysAFlatStretchWhenThatIsWanted) {
  const auto chart = ChartOf({5, 5, 6, 6, 4});
  facade->Change_Colors(chart, 0, 0, "Blue", 1, 1);
  EXPECT_THAT(PointsOf(*chart), ElementsAre(kStay, kStay, kRise, kStay, kFall));
}

TEST_F(ChangeColors, GreysAFlatStretchForTheNumberOneOnly) {
  const auto chart = ChartOf({5, 6, 6});
  facade->Change_Colors(chart, 0, 0, "Blue", 1, -1);
  EXPECT_THAT(PointsOf(*chart), ElementsAre(kStay, kRise, kRise));
}

TEST_F(ChangeColors, PaintsColumnsLikePoints) {
  const auto chart = ChartOf({5, 6, 6, 4}, xlColumnClustered);
  facade->Change_Colors(chart, 0, 0, "Yellow", 1, 1);
  EXPECT_THAT(PointsOf(*chart), ElementsAre(kStay, kRise, kStay, kFall));
}

TEST_F(ChangeColors, PaintsASinglePointAsUnchanged) {
  const auto chart = ChartOf({5});
  facade->Change_Colors(chart, 1, 1, "Blue");
  EXPECT_THAT(PointsOf(*chart), ElementsAre(kStay));
}

TEST_F(ChangeColors, TakesCellsWithoutANumberForZero) {
  const auto chart = ChartOf({5, 6, 7, 8});
  sheet->Range("A4")->ClearContents();
  sheet->Range("A6")->Value("x");
  facade->Change_Colors(chart, 0, 0, "Blue");
  EXPECT_THAT(PointsOf(*chart), ElementsAre(kStay, kFall, kRise, kFall));
}

}  // namespace
}  // namespace mirelo::testing
