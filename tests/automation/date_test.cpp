#include "automation/date.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/error_number.h"

namespace mirelo {
namespace {

using testing::NumberOf;

struct Moment {
  const char* name;
  CivilTime civil;
  double serial;
};
constexpr Moment kMoments[] = {
    {"day 0", {1899, 12, 30}, 0},
    {"day 1", {1899, 12, 31}, 1},
    {"noon of day 0", {1899, 12, 30, 12}, 0.5},
    {"before day 0 the fraction counts forward", {1899, 12, 29, 6}, -1.25},
    {"midnight before day 0", {1899, 12, 29}, -1},
    {"no leap day in 1900", {1900, 3, 1}, 61},
    {"start of 1970", {1970, 1, 1}, 25569},
    {"leap day of 2000", {2000, 2, 29}, 36585},
    {"a trading day", {2011, 1, 20, 18}, 40563.75},
    {"leap day of 2012", {2012, 2, 29, 12}, 40968.5},
    {"first day", {100, 1, 1}, -657434},
    {"first day, evening", {100, 1, 1, 18}, -657434.75},
    {"last day", {9999, 12, 31, 12}, 2958465.5},
};

TEST(Months, HaveTheirDaysAndFebruaryOneMoreInLeapYears) {
  const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  for (int month = 1; month <= 12; ++month) EXPECT_EQ(DaysInMonth(2023, month), days[month - 1]) << month;
  for (const int year : {1996, 2000, 2024, 2400}) EXPECT_EQ(DaysInMonth(year, 2), 29) << year;
  for (const int year : {1900, 2023, 2100, 9999}) EXPECT_EQ(DaysInMonth(year, 2), 28) << year;
}

TEST(Date, CountsDaysSince30December1899) {
  for (const Moment& moment : kMoments) {
    SCOPED_TRACE(moment.name);
    EXPECT_EQ(ToDate(moment.civil).serial, moment.serial);
    EXPECT_TRUE(ToCivil({moment.serial}) == moment.civil);
  }
}

TEST(Date, GoesThroughTheWholeCalendarAndBack) {
  CivilTime expected{100, 1, 1};
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  for (int serial = -657434; serial <= 2958465; ++serial) {
    const CivilTime civil = ToCivil({static_cast<double>(serial)});
    ASSERT_TRUE(civil == expected) << serial;
    ASSERT_EQ(ToDate(civil).serial, serial);
    const bool leap = expected.year % 4 == 0 && (expected.year % 100 != 0 || expected.year % 400 == 0);
    if (++expected.day <= kDays[expected.month - 1] + (leap && expected.month == 2 ? 1 : 0)) continue;
    expected.day = 1;
    if (++expected.month <= 12) continue;
    expected.month = 1;
    ++expected.year;
  }
}

TEST(Date, KeepsEverySecondOfADay) {
  for (const int day : {-1000, 0, 40563}) {
    for (int second = 0; second < 86'400; ++second) {
      CivilTime civil = ToCivil({static_cast<double>(day)});
      civil.second = second;
      const CivilTime back = ToCivil(ToDate(civil));
      ASSERT_EQ((back.hour * 60 + back.minute) * 60 + back.second, second) << "day " << day;
      ASSERT_EQ(back.day, civil.day) << "second " << second;
    }
  }
}

TEST(Date, CarriesFieldsOutOfTheirRange) {
  const struct {
    const char* name;
    CivilTime given;
    CivilTime meant;
  } kCarries[] = {
      {"month 13", {2011, 13, 1}, {2012, 1, 1}},
      {"month 0", {2011, 0, 1}, {2010, 12, 1}},
      {"month -12", {2011, -12, 1}, {2009, 12, 1}},
      {"day 0", {2011, 3, 0}, {2011, 2, 28}},
      {"29 February of a plain year", {2011, 2, 29}, {2011, 3, 1}},
      {"day 366", {2012, 1, 366}, {2012, 12, 31}},
      {"second 60", {2011, 12, 31, 23, 59, 60}, {2012, 1, 1}},
      {"hour -1", {2012, 1, 1, -1}, {2011, 12, 31, 23}},
      {"minute 90", {2011, 1, 1, 0, 90}, {2011, 1, 1, 1, 30}},
      {"second -1 before day 0", {1899, 12, 29, 0, 0, -1}, {1899, 12, 28, 23, 59, 59}},
  };
  for (const auto& [name, given, meant] : kCarries) {
    SCOPED_TRACE(name);
    EXPECT_TRUE(ToCivil(ToDate(given)) == meant);
  }
}

TEST(Date, RefusesYearsOutside100To9999) {
  EXPECT_EQ(NumberOf([] { ToDate({99, 12, 31}); }), 5);
  EXPECT_EQ(NumberOf([] { ToDate({10000, 1, 1}); }), 5);
  EXPECT_EQ(NumberOf([] { ToDate({9999, 12, 31, 24}); }), 5);
  EXPECT_EQ(NumberOf([] { ToDate({2000000000, 2000000000, 1}); }), 5);
  EXPECT_EQ(ToDate({99, 13, 1}).serial, -657434) << "what counts is the year after carrying";
}

TEST(Date, RefusesSerialsOutsideThoseYears) {
  for (double serial : {-657436.0, 2958466.0, 2958465.9999999, 1e300, -1e300, std::nan(""),
                        std::numeric_limits<double>::infinity()}) {
    const bool in_range_but_rounds_up = serial == 2958465.9999999;
    EXPECT_EQ(NumberOf([&] { ToCivil({serial}); }), in_range_but_rounds_up ? 0 : 5) << serial;
  }
}

TEST(ToCivil, RoundsToTheNearestSecond) {
  constexpr double kSecond = 1.0 / 86'400;
  EXPECT_EQ(ToCivil({40563 + 10.4 * kSecond}).second, 10);
  EXPECT_EQ(ToCivil({40563 + 10.6 * kSecond}).second, 11);
  const CivilTime next_day = ToCivil({40563 + 86'399.7 * kSecond});
  EXPECT_TRUE(next_day == (CivilTime{2011, 1, 21}));
  const CivilTime before_day_0 = ToCivil({-2 - 86'399.7 * kSecond});
  EXPECT_TRUE(before_day_0 == (CivilTime{1899, 12, 29}));
}

TEST(WeekdayOf, CountsFromSunday) {
  EXPECT_EQ(WeekdayOf(ToDate({2011, 1, 16})), 1);
  EXPECT_EQ(WeekdayOf(ToDate({2011, 1, 20, 23, 59, 59})), 5);
  EXPECT_EQ(WeekdayOf({0}), 7);
  EXPECT_EQ(WeekdayOf({1}), 1);
  EXPECT_EQ(WeekdayOf({-1}), 6);
  EXPECT_EQ(WeekdayOf({-7.5}), 7);
}

TEST(DayOfYear, Is366InLeapYearsOnly) {
  EXPECT_EQ(DayOfYear(ToDate({2011, 1, 1})), 1);
  EXPECT_EQ(DayOfYear(ToDate({2011, 12, 31, 20})), 365);
  EXPECT_EQ(DayOfYear(ToDate({2012, 12, 31})), 366);
  EXPECT_EQ(DayOfYear(ToDate({1900, 12, 31})), 365);
}

TEST(Adding, MovesTheMoment) {
  const Date date = ToDate({2011, 12, 31, 23, 30, 5});
  EXPECT_TRUE(ToCivil(AddMinutes(date, 45)) == (CivilTime{2012, 1, 1, 0, 15, 5}));
  EXPECT_TRUE(ToCivil(AddMinutes(date, -1440)) == (CivilTime{2011, 12, 30, 23, 30, 5}));
  EXPECT_TRUE(ToCivil(AddHours(date, -24 * 365)) == (CivilTime{2010, 12, 31, 23, 30, 5}));
  EXPECT_EQ(AddHours(date, 5), AddMinutes(date, 300));
  EXPECT_EQ(AddHours(AddHours(date, 7), -7), date);
}

TEST(Adding, CrossesDay0) {
  EXPECT_EQ(AddHours({0.25}, -12).serial, -1.75);
  EXPECT_EQ(AddHours({-1.75}, 12).serial, 0.25);
}

TEST(Adding, RefusesToLeaveTheCalendar) {
  EXPECT_EQ(NumberOf([] { AddHours(ToDate({9999, 12, 31}), 24); }), 5);
  EXPECT_EQ(NumberOf([] { AddMinutes(ToDate({100, 1, 1}), -1); }), 5);
  EXPECT_EQ(NumberOf([] { AddHours({0}, std::numeric_limits<std::int32_t>::max()); }), 5);
}

}  // namespace
}  // namespace mirelo
