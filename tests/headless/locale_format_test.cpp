#include "adapters/headless/locale_format.h"

#include <gtest/gtest.h>

#include <string>

namespace mirelo::headless {
namespace {

using Order = RegionalFormat::DateOrder;
const Date kMoment = ToDate({2011, 1, 5, 20, 6, 3});

// Formats as the C library has them for some places, and what a person there sees of them.
struct Place {
  const char* name;
  const char* date_format;
  const char* time_format;
  Order order;
  const char* short_date;
  const char* long_time;
};
constexpr Place kPlaces[] = {
    {"Germany", "%d.%m.%Y", "%T", Order::DayMonthYear, "05.01.2011", "20:06:03"},
    {"Britain", "%d/%m/%y", "%T", Order::DayMonthYear, "05/01/11", "20:06:03"},
    {"Sweden", "%Y-%m-%d", "%H:%M:%S", Order::YearMonthDay, "2011-01-05", "20:06:03"},
    {"Finland", "%d.%m.%Y", "%H.%M.%S", Order::DayMonthYear, "05.01.2011", "20.06.03"},
    {"Bulgaria", "%e.%m.%Y", "%k,%M,%S", Order::DayMonthYear, "5.01.2011", "20,06,03"},
    {"Czechia", "%-d.%-m.%Y", "%H:%M:%S", Order::DayMonthYear, "5.1.2011", "20:06:03"},
    {"Slovakia", "%d. %m. %Y", "%H:%M:%S", Order::DayMonthYear, "05. 01. 2011", "20:06:03"},
    {"Latvia", "%Y.%m.%d.", "%T", Order::YearMonthDay, "2011.01.05.", "20:06:03"},
    {"Japan", "%Y\u5E74%m\u6708%d\u65E5", "%H\u6642%M\u5206%S\u79D2", Order::YearMonthDay,
     "2011\u5E7401\u670805\u65E5", "20\u664206\u520603\u79D2"},
    {"Canada", "%F", "%r", Order::YearMonthDay, "2011-01-05", "08:06:03 PM"},
    {"Saudi Arabia", "%A %-d %B %Y", "%l:%M:%S", Order::DayMonthYear, "Wednesday 5 January 2011", "20:06:03"},
    {"shorthand", "%D", "%R", Order::MonthDayYear, "01/05/11", "20:06"},
    {"era and other digits", "%Od.%Om.%EY", "%OH:%OM:%OS", Order::DayMonthYear, "05.01.2011", "20:06:03"},
    {"time zone", "%d/%m/%Y", "%H:%M:%S %Z", Order::DayMonthYear, "05/01/2011", "20:06:03"},
    {"letters that are codes elsewhere", "%d d\"m\\ %m %Y", "%Hh%Mm%Ss", Order::DayMonthYear,
     "05 d\"m\\ 01 2011", "20h06m03s"},
    {"percent signs and white space", "%d%%%m%t%Y", "%H%n%M%", Order::DayMonthYear, "05%01 2011", "20 06"},
};

LocaleTexts Texts(const Place& place) {
  const RegionalFormat& english = RegionalFormat::Standard();
  LocaleTexts texts;
  texts.date_format = place.date_format;
  texts.time_format = place.time_format;
  texts.am = english.am;
  texts.pm = english.pm;
  texts.months = english.months;
  texts.short_months = english.short_months;
  texts.weekdays = english.weekdays;
  texts.short_weekdays = english.short_weekdays;
  return texts;
}

TEST(LocaleFormat, WritesDatesAndTimesAsThePlaceDoes) {
  for (const Place& place : kPlaces) {
    SCOPED_TRACE(place.name);
    const RegionalFormat format = ToRegionalFormat(Texts(place));
    EXPECT_EQ(format.date_order, place.order);
    EXPECT_EQ(ShortDate(kMoment, format), place.short_date);
    EXPECT_EQ(LongTime(kMoment, format), place.long_time);
  }
}

TEST(LocaleFormat, TakesThePunctuationBetweenFieldsAsSeparators) {
  const RegionalFormat germany = ToRegionalFormat(Texts(kPlaces[0]));
  EXPECT_EQ(germany.date_separator, ".");
  EXPECT_EQ(germany.time_separator, ":");
  EXPECT_EQ(germany.short_date, "dd/mm/yyyy");
  const RegionalFormat japan = ToRegionalFormat(Texts(kPlaces[8]));
  EXPECT_EQ(japan.date_separator, "/");
  EXPECT_EQ(japan.time_separator, ":");
}

TEST(LocaleFormat, PutsTheLongDateInTheOrderOfTheShortOne) {
  EXPECT_EQ(ToRegionalFormat(Texts(kPlaces[0])).long_date, "dddd, d mmmm yyyy");
  EXPECT_EQ(ToRegionalFormat(Texts(kPlaces[2])).long_date, "yyyy mmmm d, dddd");
}

TEST(LocaleFormat, LeavesTheSecondsOutOfTheShortTime) {
  EXPECT_EQ(ToRegionalFormat(Texts(kPlaces[0])).short_time, "hh:nn");
  EXPECT_EQ(ToRegionalFormat(Texts(kPlaces[9])).short_time, "hh:nn AMPM");
  LocaleTexts texts = Texts(kPlaces[0]);
  texts.time_format = "%H:%M";
  EXPECT_EQ(ToRegionalFormat(texts).short_time, "hh:nn");
}

TEST(LocaleFormat, UsesThePlacesOwnTwelveHourForm) {
  LocaleTexts texts = Texts(kPlaces[9]);
  texts.twelve_hour_format = "%p %l:%M:%S";
  texts.pm = "soir";
  EXPECT_EQ(LongTime(kMoment, ToRegionalFormat(texts)), "soir 8:06:03");
}

TEST(LocaleFormat, TrimsNames) {
  LocaleTexts texts = Texts(kPlaces[0]);
  texts.short_months[0] = "  1\u6708";
  EXPECT_EQ(ToRegionalFormat(texts).short_months[0], "1\u6708");
}

TEST(LocaleFormat, TakesTheSeparatorsOfNumbers) {
  LocaleTexts texts = Texts(kPlaces[0]);
  texts.decimal_separator = ",";
  texts.group_separator = "\u202F";
  const RegionalFormat format = ToRegionalFormat(texts);
  EXPECT_EQ(format.decimal_separator, ",");
  EXPECT_EQ(format.group_separator, "\u202F");
}

}  // namespace
}  // namespace mirelo::headless
