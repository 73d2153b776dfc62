// What becomes of charts that are there already.

#include "charts/build_test.h"

namespace mirelo::testing {
namespace {

using namespace host::excel;
using Answer = host::Desktop::Answer;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const ScriptedDesktop::Box kRedrawQuestion{"Redraw existing charts?", 4, "Dovanta2"};

// Charts of A and B, named by the user since.
class RedrawQuestion : public BuildTest {
 protected:
  RedrawQuestion() {
    OpenForCharts();
    Build({"A", "B"});
    for (const char* ticker : {"A", "B"}) {
      for (const auto& chart : Charts(ticker)) chart->ChartTitle()->Text("Mine");
    }
  }

  std::string Selected() {
    return application->ActiveSheet()->Name() + "!" + application->ActiveCell()->Address(false, false);
  }
};

TEST_F(RedrawQuestion, IsNotAskedWhereThereAreNoCharts) {
  Build({"C"});
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(RedrawQuestion, IsAskedOnceForAllTickers) {
  desktop.answers = {Answer::Yes};
  Build({"A", "B", "C"});
  EXPECT_THAT(desktop.boxes, ElementsAre(kRedrawQuestion));
  for (const char* ticker : {"A", "B", "C"}) EXPECT_EQ(Titles(ticker), kBoth) << ticker;
  EXPECT_THAT(CallStack(), IsEmpty());
}

TEST_F(RedrawQuestion, IsAskedAgainTheNextTime) {
  desktop.answers = {Answer::Yes, Answer::Yes};
  Build({"A"});
  Build({"A"});
  EXPECT_THAT(desktop.boxes, ElementsAre(kRedrawQuestion, kRedrawQuestion));
  EXPECT_EQ(Titles("A"), kBoth);
}

TEST_F(RedrawQuestion, LeavesAllAsItIsAfterANoAtTheFirstTicker) {
  desktop.answers = {Answer::No};
  Build({"A", "B", "C"});
  EXPECT_THAT(desktop.boxes, SizeIs(1));
  EXPECT_THAT(Titles("A"), ElementsAre("Mine", "Mine"));
  EXPECT_THAT(Titles("B"), ElementsAre("Mine", "Mine"));
  EXPECT_THAT(Titles("C"), IsEmpty());
}

TEST_F(RedrawQuestion, LeavesTheChartsOfEarlierTickersAfterANoInTheMiddle) {
  AddTable("D");
  desktop.answers = {Answer::No};
  Build({"C", "A", "D"});
  EXPECT_EQ(Titles("C"), kBoth);
  EXPECT_THAT(Titles("A"), ElementsAre("Mine", "Mine"));
  EXPECT_THAT(Titles("D"), IsEmpty());
}

TEST_F(RedrawQuestion, TakesAnyAnswerButYesForANo) {
  for (const Answer answer : {Answer::No, Answer::Cancel, Answer::Ok}) {
    desktop.answers = {answer};
    Build({"A"});
    EXPECT_THAT(Titles("A"), ElementsAre("Mine", "Mine"));
  }
}

// The exit behind the question leaves a name behind.
TEST_F(RedrawQuestion, LeavesItsRoutineOnTheCallStackAfterANo) {
  desktop.answers = {Answer::No};
  Build({"A"});
  EXPECT_THAT(CallStack(), ElementsAre("Mirelo.frmMirelo.Build_Charts"));
}

TEST_F(RedrawQuestion, DeletesWhateverChartsThereAreAfterAYes) {
  NewChartOf(*application, *Table("A"), "B3:C12", "The user's own", xlColumnClustered);
  desktop.answers = {Answer::Yes};
  Build({"A"});
  EXPECT_EQ(Titles("A"), kBoth);
}

TEST_F(RedrawQuestion, SparesShapesThatAreNoCharts) {
  Table("A")->Range("B2")->AddComment("Charts (Last & Volume)");
  Table("C")->Range("B2")->AddComment("Charts (Last & Volume)");
  desktop.answers = {Answer::Yes};
  Build({"C", "A"});
  EXPECT_THAT(desktop.boxes, SizeIs(1));
  EXPECT_EQ(Table("A")->Shapes()->Count(), 3);
  EXPECT_EQ(Table("C")->Shapes()->Count(), 3);
}

// The charts are looked at by selecting them.
TEST_F(RedrawQuestion, LeavesTheCellSelectedThatWasWhenItIsOnTheTable) {
  Table("A")->Select();
  Table("A")->Range("C7")->Select();
  desktop.answers = {Answer::No};
  Build({"A"});
  EXPECT_EQ(Selected(), "Quotes_Vertical(A)!C7");
}

TEST_F(RedrawQuestion, ComesWithTheTableInFrontWhenSomethingElseWas) {
  sheets->Item("Dovanta2_Quotes")->Select();
  std::string front;
  desktop.while_open = [&] { front = application->ActiveSheet()->Name(); };
  Build({"A"});
  EXPECT_EQ(front, "Quotes_Vertical(A)");
}

// A chart sheet has no selection to come back to.
TEST_F(RedrawQuestion, LeavesTheFirstFieldSelectedWhenNothingWas) {
  book->Charts()->Add();
  ASSERT_EQ(application->Selection(), nullptr);
  desktop.answers = {Answer::No};
  Build({"A"});
  EXPECT_EQ(Selected(), "Quotes_Vertical(A)!A2");
}

}  // namespace
}  // namespace mirelo::testing
