#include "automation/regional_format.h"

#include <gtest/gtest.h>

namespace mirelo {
namespace {

const Date kMoment = ToDate({2011, 1, 20, 8, 36, 13});

TEST(RegionalFormat, IsThatOfTheUnitedStatesByDefault) {
  EXPECT_EQ(ShortDate(kMoment, RegionalFormat::Standard()), "1/20/2011");
  EXPECT_EQ(LongTime(kMoment, RegionalFormat::Standard()), "8:36:13 AM");
}

TEST(RegionalFormat, WritesDatesAndTimesInItsOwnPatterns) {
  RegionalFormat swedish;
  swedish.date_separator = "-";
  swedish.short_date = "yyyy/mm/dd";
  swedish.long_time = "hh:nn:ss";
  EXPECT_EQ(ShortDate(kMoment, swedish), "2011-01-20");
  EXPECT_EQ(LongTime(kMoment, swedish), "08:36:13");
  EXPECT_EQ(GeneralDate(kMoment, swedish), "2011-01-20 08:36:13");
}

TEST(GeneralDate, HasDateAndTime) {
  EXPECT_EQ(GeneralDate(kMoment, RegionalFormat::Standard()), "1/20/2011 8:36:13 AM");
}

TEST(GeneralDate, IsTheDateAloneAtMidnight) {
  EXPECT_EQ(GeneralDate(ToDate({2011, 1, 20}), RegionalFormat::Standard()), "1/20/2011");
  EXPECT_EQ(GeneralDate({40563.0000001}, RegionalFormat::Standard()), "1/20/2011") << "to the second";
}

TEST(GeneralDate, IsTheTimeAloneOnDay0) {
  EXPECT_EQ(GeneralDate({0.75}, RegionalFormat::Standard()), "6:00:00 PM");
  EXPECT_EQ(GeneralDate({0}, RegionalFormat::Standard()), "12:00:00 AM");
}

}  // namespace
}  // namespace mirelo
