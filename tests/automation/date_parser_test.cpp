#include <gtest/gtest.h>

#include <string>

#include "automation/regional_format.h"

namespace mirelo {
namespace {

RegionalFormat German() {
  RegionalFormat german;
  german.date_order = RegionalFormat::DateOrder::DayMonthYear;
  german.date_separator = ".";
  german.months[0] = "Januar";
  german.months[2] = "M\u00E4rz";
  german.short_months[2] = "M\u00E4r";
  german.weekdays[4] = "Donnerstag";
  german.am = "";
  german.pm = "";
  return german;
}

constexpr CivilTime kDay{2011, 1, 20};
constexpr CivilTime kMorning{2011, 1, 20, 8, 36, 13};
constexpr CivilTime kEvening{2011, 1, 20, 20, 36, 13};

struct DateReading {
  const char* text;
  CivilTime civil;
};

constexpr DateReading kDateReadings[] = {
    {"1/20/2011", kDay},
    {"01/20/2011", kDay},
    {"1-20-2011", kDay},
    {"1.20.2011", kDay},
    {" 1 / 20 / 2011 ", kDay},
    {"1 20 2011", kDay},
    {"20/1/2011", kDay},
    {"2011-01-20", kDay},
    {"2011/1/20", kDay},
    {"1/20/11", kDay},
    {"1/2/2003", {2003, 1, 2}},
    {"11/12/13", {2013, 11, 12}},
    {"31/12/99", {1999, 12, 31}},
    {"2/29/2012", {2012, 2, 29}},
    {"20 Jan 2011", kDay},
    {"20-jan-11", kDay},
    {"20JAN2011", kDay},
    {"January 20, 2011", kDay},
    {"Jan 20 2011", kDay},
    {"Jan. 20, 2011", kDay},
    {"2011 January 20", kDay},
    {"20 January, 2011", kDay},
    {"Jan 2011", {2011, 1, 1}},
    {"2011 Jan", {2011, 1, 1}},
    {"Thursday, January 20, 2011", kDay},
    {"Thu 20 Jan 2011", kDay},
    {"May 5, 2011", {2011, 5, 5}},
    {"1/20/2011 8:36:13 AM", kMorning},
    {"1/20/2011 08:36:13", kMorning},
    {"1/20/2011, 8:36:13 am", kMorning},
    {"1/20/2011 8:36:13 PM", kEvening},
    {"8:36:13 PM 1/20/2011", kEvening},
    {"2011-01-20 20:36:13", kEvening},
    {"20:36:13, 20 Jan 2011", kEvening},
    {"1/20/2011 8:36", {2011, 1, 20, 8, 36}},
    {"09:30", {1899, 12, 30, 9, 30}},
    {"9:30:15p", {1899, 12, 30, 21, 30, 15}},
    {"9 PM", {1899, 12, 30, 21}},
    {"9a", {1899, 12, 30, 9}},
    {"12:00:00 AM", {1899, 12, 30, 0}},
    {"12:15 AM", {1899, 12, 30, 0, 15}},
    {"12:15 PM", {1899, 12, 30, 12, 15}},
    {"0:15 AM", {1899, 12, 30, 0, 15}},
    {"23:59:59", {1899, 12, 30, 23, 59, 59}},
    {"1/1/100", {100, 1, 1}},
    {"12/31/9999", {9999, 12, 31}},
};

TEST(ParseDate, ReadsTheFormsThatPeopleWrite) {
  for (const DateReading& reading : kDateReadings) {
    const auto date = ParseDate(reading.text, RegionalFormat::Standard());
    ASSERT_TRUE(date.has_value()) << reading.text;
    EXPECT_EQ(date->serial, ToDate(reading.civil).serial) << reading.text;
  }
}

TEST(ParseDate, TriesTheOrderOfTheTextBeforeTheRegions) {
  using Order = RegionalFormat::DateOrder;
  EXPECT_EQ(ParseDate("1/2/2011", German()), ToDate({2011, 2, 1}));
  EXPECT_EQ(ParseDate("1/2/2011", German(), Order::MonthDayYear), ToDate({2011, 1, 2}));
  EXPECT_EQ(ParseDate("1/2/2011", RegionalFormat::Standard(), Order::DayMonthYear), ToDate({2011, 2, 1}));
  EXPECT_EQ(ParseDate("20/1/2011", German(), Order::MonthDayYear), ToDate(kDay)) << "there is no month 20";
  EXPECT_EQ(ParseDate("20 M\u00E4rz 2011", German(), Order::MonthDayYear), ToDate({2011, 3, 20}))
      << "names are the region's";
}

TEST(ParseDate, TakesNothingElse) {
  for (const char* text : {"",
                           " ",
                           "MSFT",
                           "N/A",
                           "1",
                           "1234",
                           "1.5",
                           "0.5",
                           "-1",
                           "1/20",
                           "Jan 20",
                           "20 Jan",
                           "1/20/2011x",
                           "x1/20/2011",
                           "13/13/2011",
                           "2011-20-01",
                           "2/30/2011",
                           "2/29/2011",
                           "2/29/1900",
                           "0/1/2011",
                           "1/0/2011",
                           "1/32/2011",
                           "1/20/20111",
                           "1/1/0099",
                           "1/20/2011/",
                           "/1/20/2011",
                           "1//20/2011",
                           "1/20/2011 1/20/2011",
                           "8:36 8:36",
                           "1/20/2011,",
                           "24:00",
                           "9:60",
                           "9:30:60",
                           "9:30:15:10",
                           "9:",
                           ":30",
                           "9::30",
                           "9:30:",
                           "13:00 PM",
                           "9 30 PM PM",
                           "123:00",
                           "AM",
                           "PM 9",
                           "January",
                           "Thursday",
                           "Jan Feb 2011",
                           "Jan 20 Feb",
                           "20 2011",
                           "99999999999999999999",
                           "1/2/3/4",
                           "January 20 2011 Thursday"}) {
    EXPECT_FALSE(ParseDate(text, RegionalFormat::Standard()).has_value()) << '"' << text << '"';
  }
}

TEST(ParseDate, TakesTwoDigitYearsFrom30AsOfTheLastCentury) {
  const auto year = [](const char* text) {
    return ToCivil(ParseDate(text, RegionalFormat::Standard()).value()).year;
  };
  EXPECT_EQ(year("1/1/0"), 2000);
  EXPECT_EQ(year("1/1/00"), 2000);
  EXPECT_EQ(year("1/1/29"), 2029);
  EXPECT_EQ(year("1/1/30"), 1930);
  EXPECT_EQ(year("1/1/99"), 1999);
}

TEST(ParseDate, PrefersTheOrderOfTheRegion) {
  RegionalFormat regional;
  const auto read = [&](RegionalFormat::DateOrder order) {
    regional.date_order = order;
    return ParseDate("1/2/3", regional).value();
  };
  EXPECT_EQ(read(RegionalFormat::DateOrder::MonthDayYear), ToDate({2003, 1, 2}));
  EXPECT_EQ(read(RegionalFormat::DateOrder::DayMonthYear), ToDate({2003, 2, 1}));
  EXPECT_EQ(read(RegionalFormat::DateOrder::YearMonthDay), ToDate({2001, 2, 3}));
}

TEST(ParseDate, ReadsTheNamesOfTheRegionAndTheEnglishOnes) {
  const RegionalFormat german = German();
  for (const char* text :
       {"20. Januar 2011", "20.1.2011", "Donnerstag, 20. Januar 2011", "20 January 2011"}) {
    EXPECT_EQ(ParseDate(text, german), ToDate(kDay)) << text;
  }
  EXPECT_EQ(ParseDate("3 M\u00C4RZ 2011", german), ToDate({2011, 3, 3})) << "whatever the case";
  EXPECT_EQ(ParseDate("3 m\u00E4r 2011", german), ToDate({2011, 3, 3}));
  EXPECT_FALSE(ParseDate("3 M\u00E4r\u00E4 2011", german).has_value());
  EXPECT_EQ(ParseDate("8 PM", german), ToDate({1899, 12, 30, 20})) << "the region has no marks of its own";
}

TEST(ParseDate, ReadsFullStopsAsTimeSeparatorsBehindADay) {
  RegionalFormat finnish = German();
  finnish.time_separator = ".";
  EXPECT_EQ(ParseDate("20.1.2011 8.36.13", finnish), ToDate(kMorning));
  EXPECT_EQ(ParseDate("8:36:13", finnish), ToDate({1899, 12, 30, 8, 36, 13}));
}

TEST(ParseDate, ReadsWhatGeneralDateWrites) {
  for (const RegionalFormat& regional : {RegionalFormat::Standard(), German()}) {
    for (const CivilTime& civil : {kDay, kMorning, kEvening, CivilTime{}, CivilTime{1899, 12, 30, 9, 30}}) {
      const Date date = ToDate(civil);
      RegionalFormat with_marks = regional;
      if (with_marks.am.empty()) with_marks.long_time = "hh:nn:ss";
      EXPECT_EQ(ParseDate(GeneralDate(date, with_marks), with_marks), date) << GeneralDate(date, with_marks);
    }
  }
}

}  // namespace
}  // namespace mirelo
