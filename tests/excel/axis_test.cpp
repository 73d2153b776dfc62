#include "charts_on_sheet.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;

constexpr XlAxisType kNoAxis = static_cast<XlAxisType>(3);

class AxesOfChart : public ChartedSheet {
 protected:
  std::shared_ptr<Chart> chart = AddChart();
};

TEST_P(AxesOfChart, AreOnUntilTheyAreTurnedOff) {
  for (const XlAxisType type : {xlCategory, xlValue}) {
    EXPECT_TRUE(chart->HasAxis(type, xlPrimary));
    chart->HasAxis(type, xlPrimary, false);
    EXPECT_FALSE(chart->HasAxis(type, xlPrimary));
  }
  chart->HasAxis(xlValue, xlPrimary, true);
  EXPECT_TRUE(chart->HasAxis(xlValue, xlPrimary));
  EXPECT_FALSE(chart->HasAxis(xlCategory, xlPrimary)) << "each for itself";
}

TEST_P(AxesOfChart, AreNeverSecondary) {
  for (const XlAxisType type : {xlCategory, xlValue}) {
    EXPECT_FALSE(chart->HasAxis(type, xlSecondary));
    EXPECT_EQ(NumberOf([&] { chart->HasAxis(type, xlSecondary, true); }), 1004);
    EXPECT_EQ(NumberOf([&] { chart->HasAxis(type, xlSecondary, false); }), 0);
    EXPECT_EQ(NumberOf([&] { chart->Axes(type, xlSecondary); }), 1004);
  }
}

TEST_P(AxesOfChart, AreOfTwoKinds) {
  EXPECT_EQ(NumberOf([&] { chart->HasAxis(kNoAxis, xlPrimary); }), 1004);
  EXPECT_EQ(NumberOf([&] { chart->HasAxis(kNoAxis, xlPrimary, true); }), 1004);
  EXPECT_EQ(NumberOf([&] { chart->Axes(kNoAxis, xlPrimary); }), 1004);
}

TEST_P(AxesOfChart, HaveLabelsWhileTheyAreOn) {
  const auto axis = chart->Axes(xlValue, xlPrimary);
  const auto labels = axis->TickLabels();
  const auto font = labels->Font();
  labels->AutoScaleFont(false);
  font->Size(8);
  font->Bold(true);
  font->ColorIndex(3);
  EXPECT_FALSE(chart->Axes(xlValue, xlPrimary)->TickLabels()->AutoScaleFont());
  EXPECT_EQ(chart->Axes(xlValue, xlPrimary)->TickLabels()->Font()->Size(), Variant(8.0));
  EXPECT_EQ(font->Bold(), Variant(true));
  EXPECT_EQ(font->ColorIndex(), Variant(3));
  EXPECT_TRUE(chart->Axes(xlCategory, xlPrimary)->TickLabels()->AutoScaleFont()) << "the other axis";
  EXPECT_EQ(NumberOf([&] { font->Size(0); }), 1004);

  chart->HasAxis(xlValue, xlPrimary, false);
  EXPECT_EQ(NumberOf([&] { axis->TickLabels(); }), 1004);
  EXPECT_EQ(NumberOf([&] { labels->AutoScaleFont(); }), 1004);
  EXPECT_EQ(NumberOf([&] { labels->Font(); }), 1004);
  EXPECT_EQ(NumberOf([&] { font->Size(9); }), 1004);
  chart->HasAxis(xlValue, xlPrimary, true);
  EXPECT_EQ(font->Size(), Variant(8.0));
}

TEST_P(AxesOfChart, HaveLabelsThatGrowWithTheChartIfTheyMay) {
  const auto fixed = chart->Axes(xlValue, xlPrimary)->TickLabels();
  const auto scaled = chart->Axes(xlCategory, xlPrimary)->TickLabels();
  fixed->AutoScaleFont(false);
  fixed->Font()->Size(8);
  scaled->Font()->Size(8);
  ShapeOf(chart)->ScaleHeight(2, msoFalse);
  ShapeOf(chart)->ScaleWidth(2, msoFalse);
  EXPECT_EQ(fixed->Font()->Size(), Variant(8.0));
  EXPECT_NEAR(scaled->Font()->Size().ToDouble(), 16, 0.5);
}

TEST_P(AxesOfChart, MayHaveGridlines) {
  const auto axis = chart->Axes(xlValue, xlPrimary);
  EXPECT_FALSE(axis->HasMajorGridlines());
  EXPECT_EQ(NumberOf([&] { axis->MajorGridlines(); }), 1004);
  axis->HasMajorGridlines(true);
  EXPECT_TRUE(axis->HasMajorGridlines());
  EXPECT_FALSE(chart->Axes(xlCategory, xlPrimary)->HasMajorGridlines());
  const auto line = axis->MajorGridlines()->Border();
  line->ColorIndex(16);
  line->Weight(xlHairline);
  line->LineStyle(xlDot);
  EXPECT_EQ(axis->MajorGridlines()->Border()->ColorIndex(), Variant(16));
  EXPECT_EQ(axis->MajorGridlines()->Border()->Weight(), Variant(1));
  EXPECT_EQ(axis->MajorGridlines()->Border()->LineStyle(), Variant(-4118));
}

TEST_P(AxesOfChart, HaveGridlinesAlsoWhileTheyAreOff) {
  chart->HasAxis(xlValue, xlPrimary, false);
  const auto axis = chart->Axes(xlValue, xlPrimary);
  axis->HasMajorGridlines(true);
  axis->MajorGridlines()->Border()->ColorIndex(16);
  EXPECT_EQ(axis->MajorGridlines()->Border()->ColorIndex(), Variant(16));
}

TEST_P(AxesOfChart, HaveNewGridlinesOnceTheOldOnesWereTakenAway) {
  const auto axis = chart->Axes(xlValue, xlPrimary);
  axis->HasMajorGridlines(true);
  const auto gridlines = axis->MajorGridlines();
  const auto line = gridlines->Border();
  line->ColorIndex(16);
  axis->HasMajorGridlines(true);
  EXPECT_EQ(line->ColorIndex(), Variant(16)) << "they were there";
  axis->HasMajorGridlines(false);
  EXPECT_EQ(NumberOf([&] { gridlines->Border(); }), 1004);
  EXPECT_EQ(NumberOf([&] { line->ColorIndex(); }), 1004);
  axis->HasMajorGridlines(true);
  EXPECT_EQ(line->LineStyle(), Variant(xlLineStyleAutomatic));
}

MIRELO_AGAINST_ALL(AxesOfChart);

}  // namespace
}  // namespace mirelo::testing
