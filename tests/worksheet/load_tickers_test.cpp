// Tickers and mode of update, as the dialog reads them from the quote table.

#include "worksheet/table_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LoadingTickers : public TableTest {
 protected:
  ~LoadingTickers() override { EXPECT_THAT(CallStack(), IsEmpty()); }
};

TEST_F(LoadingTickers, TakesThemInTheOrderOfTheSheet) {
  Open();
  EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM"));
}

TEST_F(LoadingTickers, CapitalisesThem) {
  PutColumn("A3", {"msft", "Brk.b"});
  Open();
  EXPECT_THAT(Tickers(), ElementsAre("MSFT", "BRK.B"));
}

TEST_F(LoadingTickers, PassesOverTextsOfTwelveCharactersAndMore) {
  PutColumn("A3", {"abcdefghijk", "abcdefghijkl", "Total of all quotes", "IBM"});
  Open();
  EXPECT_THAT(Tickers(), ElementsAre("ABCDEFGHIJK", "IBM"));
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(LoadingTickers, StopsAtTheFirstGap) {
  Put("A6", "ORCL");
  Open();
  EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM"));
}

TEST_F(LoadingTickers, LeapsAGapRightUnderTheHeader) {
  Put("A3", Variant());
  Open();
  EXPECT_THAT(Tickers(), ElementsAre("IBM"));
}

// Whatever ends at row 50000 or below is the foot of the sheet and no ticker.
TEST_F(LoadingTickers, EndAboveRow50000) {
  Range("A3:A4")->Clear();
  Put("A50000", "IBM");
  Open();
  EXPECT_THAT(Tickers(), IsEmpty());
  EXPECT_EQ(Shown(), "Ticker,Last,last,Ask");
  Put("A49999", "MSFT");
  Range("A50000")->Clear();
  Open();
  EXPECT_THAT(Tickers(), ElementsAre("MSFT"));
  EXPECT_EQ(Shown(), "Ticker,Bid,Tick");
}

TEST_F(LoadingTickers, TakesARepeatedTickerOnce) {
  PutColumn("A3", {"MSFT", "IBM", "msft"});
  Open();
  EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM"));
}

TEST_F(LoadingTickers, TakesWhatTheSheetTookForNumbers) {
  Put("A3", 600000);
  Put("A4", true);
  Open();
  EXPECT_THAT(Tickers(), ElementsAre("600000", "TRUE"));
}

TEST_F(LoadingTickers, TakesColumnAWhateverHeadsIt) {
  Columns({"Last", "Ticker"});
  Open();
  EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM"));
}

// The mode of update, from the status caption.

class LoadingTheMode : public TableTest {
 protected:
  struct Outcome {
    std::string seconds;
    int ticked;
    friend bool operator==(const Outcome&, const Outcome&) = default;
    friend void PrintTo(const Outcome& o, std::ostream* out) { *out << o.seconds << ", " << o.ticked; }
  };
  // The number of seconds and the box after reading a table with this caption. The settings say 60 and 1.
  Outcome Read(const std::string& caption) {
    sheet->Range("A1")->Value("'" + caption);
    Open();
    return {form.txtSec.Text(), form.chkUpdOrNot.Value()};
  }
  const Outcome unchanged{"60", 1};
};

TEST_F(LoadingTheMode, OfSnapshotsEverySoManySeconds) {
  EXPECT_EQ(Read("SnapShot( 15 sec)"), (Outcome{"15", 1}));
  EXPECT_EQ(Read("SnapShot( 3600 sec)"), (Outcome{"3600", 1}));
  EXPECT_EQ(Read("SnapShot(15SEC)"), (Outcome{"15", 1}));
  EXPECT_EQ(Read("SnapShot( 7.5 seconds or so)"), (Outcome{"8", 1}));
  EXPECT_EQ(Read("SnapShot( some sec)"), (Outcome{"0", 1}));
  EXPECT_EQ(Read("SnapShot( 15 sec (more or less))"), (Outcome{"15", 1}));
}

TEST_F(LoadingTheMode, OfASingleSnapshotLeavesTheBoxToTheSettings) {
  EXPECT_EQ(Read("SnapShot( Update Onse )"), unchanged);
  Save("UpdateEvery", 0);
  EXPECT_EQ(Read("SnapShot( Update Onse )").ticked, 0);
}

TEST_F(LoadingTheMode, OfAnythingElseInBracketsTakesTheTickAway) {
  EXPECT_EQ(Read("SnapShot()").ticked, 0);
  EXPECT_EQ(Read("SnapShot( Update Once )").ticked, 0);
}

TEST_F(LoadingTheMode, OfAStreamTakesNoSecondsAndItsSource) {
  EXPECT_EQ(Read("Streaming( CSWatch - STREAMING RealTime (Subscription) )"), (Outcome{"0", 1}));
  EXPECT_EQ(Trim(form.ComQuoteSource.Text()), "CSWatch - STREAMING RealTime (Subscription)");
}

TEST_F(LoadingTheMode, OfASnapshotOffersNoQuoteSources) {
  Read("SnapShot( 15 sec)");
  EXPECT_EQ(form.ComQuoteSource.ListCount(), 0);
}

TEST_F(LoadingTheMode, IsReadFromATableWithoutTickersToo) {
  Range("A3:A4")->Clear();
  EXPECT_EQ(Read("SnapShot( 15 sec)"), (Outcome{"15", 1}));
}

TEST_F(LoadingTheMode, IsNoneOfOtherCaptions) {
  for (const char* caption : {"", "SnapShot", "15 sec", "snapshot( 15 sec)", "SnapShot ( 15 sec)",
                              "( 15 sec)", "streaming( x )", "My quotes (15 sec)", "SnapShot) 15 sec("}) {
    SCOPED_TRACE(caption);
    EXPECT_EQ(Read(caption), unchanged);
    EXPECT_THAT(desktop.reports, IsEmpty());
  }
}

TEST_F(LoadingTheMode, IsNoneOfACaptionThatIsNoText) {
  sheet->Range("A1")->Value(15);
  Open();
  EXPECT_THAT(desktop.reports, IsEmpty());
}

TEST_F(LoadingTheMode, FailsWithoutAClosingBracket) {
  Answers({"ABORT", "ABORT"});
  EXPECT_EQ(Read("SnapShot( 15 sec"), unchanged);
  EXPECT_EQ(Read("Streaming( x "), unchanged);
  EXPECT_THAT(ReportedErrors(), ElementsAre(5, 5));
  EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM"));
}

TEST_F(LoadingTheMode, FailsForMoreSecondsThanAreCounted) {
  Answers({"ABORT"});
  EXPECT_EQ(Read("SnapShot( 40000 sec)"), unchanged);
  EXPECT_THAT(ReportedErrors(), ElementsAre(6));
}

}  // namespace
}  // namespace mirelo::testing
