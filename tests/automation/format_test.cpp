#include "automation/format.h"

#include <gtest/gtest.h>

#include <string>

#include "support/error_number.h"

namespace mirelo {
namespace {

const RegionalFormat& Standard() { return RegionalFormat::Standard(); }
const Date kFormattedMorning = ToDate({2011, 1, 20, 8, 6, 3});     // Thursday
const Date kFormattedEvening = ToDate({2011, 11, 5, 20, 36, 13});  // Saturday

struct Formatting {
  const char* format;
  const char* morning;
  const char* evening;
};
constexpr Formatting kFormattings[] = {
    {"hh:mm:ss", "08:06:03", "20:36:13"},
    {"mm/dd/yyyy", "01/20/2011", "11/05/2011"},
    {"mm/dd/yyyy hh:mm:ss", "01/20/2011 08:06:03", "11/05/2011 20:36:13"},
    {"d", "20", "5"},
    {"dd", "20", "05"},
    {"ddd", "Thu", "Sat"},
    {"dddd", "Thursday", "Saturday"},
    {"ddddd", "1/20/2011", "11/5/2011"},
    {"dddddd", "Thursday, January 20, 2011", "Saturday, November 5, 2011"},
    {"m", "1", "11"},
    {"mm", "01", "11"},
    {"mmm", "Jan", "Nov"},
    {"mmmm", "January", "November"},
    {"h:m", "8:6", "20:36"},
    {"h m", "8 6", "20 36"},
    {"hh mm", "08 06", "20 36"},
    {"m:s", "6:3", "36:13"},
    {"mm:ss", "06:03", "36:13"},
    {"h mmm", "8 Jan", "20 Nov"},
    {"d m", "20 1", "5 11"},
    {"m d h", "1 20 8", "11 5 20"},
    {"h d m", "8 20 1", "20 5 11"},
    {"n", "6", "36"},
    {"nn", "06", "36"},
    {"y", "20", "309"},
    {"yy", "11", "11"},
    {"yyyy", "2011", "2011"},
    {"h", "8", "20"},
    {"s", "3", "13"},
    {"w", "5", "7"},
    {"ww", "4", "45"},
    {"q", "1", "4"},
    {"c", "1/20/2011 8:06:03 AM", "11/5/2011 8:36:13 PM"},
    {"ttttt", "8:06:03 AM", "8:36:13 PM"},
    {"h AM/PM", "8 AM", "8 PM"},
    {"hh:mm am/pm", "08:06 am", "08:36 pm"},
    {"hA/P", "8A", "8P"},
    {"ha/p", "8a", "8p"},
    {"h AMPM", "8 AM", "8 PM"},
    {"HH:MM:SS", "08:06:03", "20:36:13"},
    {"YYYY-MM-DD", "2011-01-20", "2011-11-05"},
    {"\"day\" d", "day 20", "day 5"},
    {"\"open", "open", "open"},
    {"\\d d", "d 20", "d 5"},
    {"d\\", "20\\", "5\\"},
    {"\\\u00E4d", "\u00E420", "\u00E45"},
    {"yyyy\u5E74", "2011\u5E74", "2011\u5E74"},
    {"(x, 1)", "(x, 1)", "(x, 1)"},
    {"General Date", "1/20/2011 8:06:03 AM", "11/5/2011 8:36:13 PM"},
    {"Long Date", "Thursday, January 20, 2011", "Saturday, November 5, 2011"},
    {"Medium Date", "20-Jan-11", "05-Nov-11"},
    {"short date", "1/20/2011", "11/5/2011"},
    {"Long Time", "8:06:03 AM", "8:36:13 PM"},
    {"Medium Time", "08:06 AM", "08:36 PM"},
    {"Short Time", "08:06", "20:36"},
    {"", "1/20/2011 8:06:03 AM", "11/5/2011 8:36:13 PM"},
};

TEST(Format, WritesADateInAUsersFormat) {
  for (const Formatting& formatting : kFormattings) {
    SCOPED_TRACE(formatting.format);
    EXPECT_EQ(Format(kFormattedMorning, formatting.format, Standard()), formatting.morning);
    EXPECT_EQ(Format(kFormattedEvening, formatting.format, Standard()), formatting.evening);
  }
}

TEST(Format, Writes12OnTheTwelveHourClockForNoonAndMidnight) {
  EXPECT_EQ(Format(ToDate({2011, 1, 20, 0, 5}), "h:nn AM/PM", Standard()), "12:05 AM");
  EXPECT_EQ(Format(ToDate({2011, 1, 20, 12, 5}), "h:nn AM/PM", Standard()), "12:05 PM");
  EXPECT_EQ(Format(ToDate({2011, 1, 20, 11, 59}), "hA/P", Standard()), "11A");
}

TEST(Format, BeginsWeeksOnSundayAndHoldsJanuaryFirstInWeekOne) {
  const struct {
    CivilTime day;
    const char* week;
  } kWeeks[] = {
      {{2011, 1, 1}, "1"},                                               // a Saturday
      {{2011, 1, 2}, "2"},                                               // the Sunday behind it
      {{2011, 1, 8}, "2"},    {{2011, 1, 9}, "3"}, {{2012, 1, 1}, "1"},  // a Sunday
      {{2012, 1, 7}, "1"},    {{2012, 1, 8}, "2"}, {{2011, 12, 31}, "53"},
      {{2000, 12, 31}, "54"},  // a leap year that begins on Saturday and ends on Sunday
  };
  for (const auto& [day, week] : kWeeks) EXPECT_EQ(Format(ToDate(day), "ww", Standard()), week) << day.year;
}

TEST(Format, UsesSeparatorsNamesAndMarksOfTheRegion) {
  RegionalFormat regional;
  regional.date_separator = ".";
  regional.time_separator = "h";
  regional.months[0] = "janvier";
  regional.short_weekdays[4] = "jeu.";
  regional.am = "matin";
  regional.short_date = "dd/mm/yyyy";
  regional.long_time = "hh:nn:ss";
  EXPECT_EQ(Format(kFormattedMorning, "d/m/yyyy", regional), "20.1.2011");
  EXPECT_EQ(Format(kFormattedMorning, "hh:nn", regional), "08h06");
  EXPECT_EQ(Format(kFormattedMorning, "ddd d mmmm", regional), "jeu. 20 janvier");
  EXPECT_EQ(Format(kFormattedMorning, "h AMPM", regional), "8 matin");
  EXPECT_EQ(Format(kFormattedMorning, "c", regional), "20.01.2011 08h06h03");
}

TEST(Format, SeparatesHoursOfANestedPatternFromTheOuterOnes) {
  RegionalFormat regional;
  regional.long_time = "hh:nn:ss";
  EXPECT_EQ(Format(kFormattedEvening, "h AM/PM ttttt h", regional), "8 PM 20:36:13 8");
  EXPECT_EQ(Format(kFormattedEvening, "h ttttt h", Standard()), "20 8:36:13 PM 20");
}

TEST(Format, EndsWhenARegionalPatternRefersToItself) {
  RegionalFormat regional;
  regional.short_date = "ddddd";
  regional.long_date = "c dddddd";
  regional.long_time = "ttttt";
  EXPECT_EQ(Format(kFormattedMorning, "ddddd/ttttt", regional), "ddddd/ttttt");
  EXPECT_EQ(Format(kFormattedMorning, "dddddd", regional), "c dddddd");
  EXPECT_EQ(Format(kFormattedMorning, "c", regional), "ddddd ttttt");
  regional.short_date = "c";
  EXPECT_EQ(Format(kFormattedMorning, "c", regional), "c ttttt");
  EXPECT_EQ(GeneralDate(kFormattedMorning, regional), "c ttttt");
}

TEST(Format, RefusesDatesOutsideTheCalendar) {
  EXPECT_EQ(testing::NumberOf([] { Format(Date{1e9}, "d", Standard()); }), 5);
  EXPECT_EQ(testing::NumberOf([] { Format(Date{1e9}, "", Standard()); }), 5);
}

TEST(FormatOfText, WritesTextThatReadsAsADate) {
  EXPECT_EQ(Format("1/20/2011 8:36:13 PM", "hh:mm:ss", Standard()), "20:36:13");
  EXPECT_EQ(Format("2011-01-20", "mm/dd/yyyy", Standard()), "01/20/2011");
  EXPECT_EQ(Format("09:30", "h:mm AM/PM", Standard()), "9:30 AM");
}

TEST(FormatOfText, LeavesOtherTextAsItIs) {
  for (const char* text : {"", "N/A", "12", "0.5", "not a date", "13/13/2011", "\xFF"}) {
    EXPECT_EQ(Format(text, "hh:mm:ss", Standard()), text);
  }
}

TEST(FormatOfText, LeavesTextAsItIsWithoutAFormat) {
  EXPECT_EQ(Format("2011-01-20", "", Standard()), "2011-01-20");
}

}  // namespace
}  // namespace mirelo
