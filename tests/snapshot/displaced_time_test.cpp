#include <gmock/gmock.h>

#include "snapshot/last_quote_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DisplacedTime : public LastQuoteTest {
 protected:
  DisplacedTime() { Show("Date,Time"); }

  std::vector<std::string> Row() { return RowOf(facade->GetLastQuote(TickersOf({"A"})), 1); }
};

TEST_F(DisplacedTime, IsTheMomentOfTheRetrievalNotTheReplys) {
  market.quotes["A"].date = "1/19/2011";
  EXPECT_THAT(Row(), ElementsAre("1/20/2011 8:36:13 AM", "08:36:13"));
}

TEST_F(DisplacedTime, WritesTheDateInTheUsersFormat) {
  facade->DovantaFormatUserDate("dd.mm.yyyy");
  EXPECT_THAT(Row(), ElementsAre("20.01.2011", "08:36:13"));
}

// The 20th is a Thursday. Weeks begin on Sunday, and the first one is that of 1 January, here a Saturday.
TEST_F(DisplacedTime, CountsWeeksFromSundayAndFromTheFirstOfJanuary) {
  facade->DovantaFormatUserDate("w ww");
  EXPECT_THAT(Row(), ElementsAre("5 4", "08:36:13"));
}

TEST_F(DisplacedTime, OutsideTheRangeOfDatesIsARunTimeError) {
  for (const std::int32_t hours : {2147483647, -2147483647}) {
    SCOPED_TRACE(hours);
    desktop.reports.clear();
    Save("DisplacementHour", hours);
    EXPECT_TRUE(IsEmptyText(facade->GetLastQuote(TickersOf({"A"}))));
    ASSERT_EQ(desktop.reports.size(), 1u);
    EXPECT_THAT(desktop.reports[0].text,
                ::testing::HasSubstr("\tError: 5, (Invalid procedure call or argument)\r\n"
                                     "\tin Mirelo.cMirelo.GetLastQuote at line 0\r\n"));
    EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
  }
}

TEST_F(DisplacedTime, AddsMinutesAndHoursOfEitherSign) {
  facade->DovantaFormatUserDate("yyyy-mm-dd");
  struct Case {
    Variant hour, minute;
    const char* date;
    const char* time;
  };
  const Case cases[] = {
      {"0", "0", "2011-01-20", "08:36:13"}, {2, 0, "2011-01-20", "10:36:13"},
      {-9, 0, "2011-01-19", "23:36:13"},    {0, -37, "2011-01-20", "07:59:13"},
      {15, 24, "2011-01-21", "00:00:13"},   {"-5", "-30", "2011-01-20", "03:06:13"},
      {48, 1440, "2011-01-23", "08:36:13"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.hour.ToText()) + ":" + c.minute.ToText());
    Save("DisplacementHour", c.hour);
    Save("DisplacementMinute", c.minute);
    EXPECT_THAT(Row(), ElementsAre(c.date, c.time));
  }
}

TEST_F(DisplacedTime, IsZeroOClockAtMidnightThoughTheGeneralFormLeavesItOut) {
  clock.Set({2011, 1, 21, 0, 0, 0});
  EXPECT_THAT(Row(), ElementsAre("1/21/2011", "00:00:00"));
}

TEST_F(DisplacedTime, FollowsTheRegion) {
  clock.regional.date_order = RegionalFormat::DateOrder::DayMonthYear;
  clock.regional.short_date = "dd/mm/yyyy";
  clock.regional.long_time = "hh:mm:ss";
  EXPECT_THAT(Row(), ElementsAre("20/01/2011 08:36:13", "08:36:13"));
}

TEST_F(DisplacedTime, IsOneForAllRowsOfABatchAndNewInTheNext) {
  internet.answer = [&](const auto& request) {
    clock.Advance(1);
    return market.Reply(request.resource);
  };
  const Variant result = facade->GetLastQuote(Tickers(82));
  EXPECT_EQ(RowOf(result, 1)[1], "08:36:14");
  EXPECT_EQ(RowOf(result, 81)[1], "08:36:14");
  EXPECT_EQ(RowOf(result, 82)[1], "08:36:15");
}

// A macro may run inside a transfer.
TEST_F(DisplacedTime, FollowsAFormatThatChangesWithinTheSecond) {
  facade->DovantaFormatUserDate("yyyy");
  internet.answer = [&](const auto& request) {
    if (internet.requests.size() == 2) facade->DovantaFormatUserDate("mm");
    return market.Reply(request.resource);
  };
  const Variant result = facade->GetLastQuote(Tickers(82));
  EXPECT_EQ(RowOf(result, 81)[0], "2011");
  EXPECT_EQ(RowOf(result, 82)[0], "01");
}

// The displacement is read anew on each call.
TEST_F(DisplacedTime, KeepsTheFormerDisplacementWhereTheNewOneCannotBeRead) {
  Save("DisplacementHour", 1);
  EXPECT_EQ(Row()[1], "09:36:13");
  Save("DisplacementHour", "one");
  Save("DisplacementMinute", 5);
  Answers({"IGNORE"});
  EXPECT_EQ(Row()[1], "09:41:13");
  ASSERT_EQ(desktop.reports.size(), 1u);
  EXPECT_THAT(desktop.reports[0].text,
              ::testing::HasSubstr("\tin Mirelo.cMirelo.GetDisplacementHourMinute at line 0"));
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

// An abort ends the reading of the displacement only: the quotes still come.
TEST_F(DisplacedTime, KeepsTheWholeFormerDisplacementWhenTheUserAborts) {
  Save("DisplacementHour", 1);
  EXPECT_EQ(Row()[1], "09:36:13");
  Save("DisplacementHour", "one");
  Save("DisplacementMinute", 5);
  Answers({"ABORT"});
  EXPECT_EQ(Row()[1], "09:36:13");
  EXPECT_EQ(desktop.reports.size(), 1u);
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(DisplacedTime, TakesADisplacementThatWasMendedBeforeARetry) {
  Save("DisplacementHour", "one");
  Save("DisplacementMinute", 5);
  desktop.while_open = [] { Save("DisplacementHour", 1); };
  Answers({"RETRY"});
  EXPECT_EQ(Row()[1], "09:41:13");
  EXPECT_EQ(desktop.reports.size(), 1u);
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
