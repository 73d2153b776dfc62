#include "adapters/windows/user_format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "automation/date.h"

namespace mirelo::testing {
namespace {

// The standard format is that of the United States.
TEST(UserFormat, OfTheUnitedStatesIsTheStandardOne) {
  const RegionalFormat told = windows::UserFormat(L"en-US");
  const RegionalFormat& standard = RegionalFormat::Standard();
  EXPECT_EQ(told.date_order, standard.date_order);
  EXPECT_EQ(told.date_separator, standard.date_separator);
  EXPECT_EQ(told.time_separator, standard.time_separator);
  EXPECT_EQ(told.decimal_separator, standard.decimal_separator);
  EXPECT_EQ(told.group_separator, standard.group_separator);
  EXPECT_EQ(told.short_date, standard.short_date);
  EXPECT_EQ(told.long_date, standard.long_date);
  EXPECT_EQ(told.short_time, standard.short_time);
  EXPECT_EQ(told.long_time, standard.long_time);
  EXPECT_EQ(told.am, standard.am);
  EXPECT_EQ(told.pm, standard.pm);
  EXPECT_EQ(told.months, standard.months);
  EXPECT_EQ(told.short_months, standard.short_months);
  EXPECT_EQ(told.weekdays, standard.weekdays);
  EXPECT_EQ(told.short_weekdays, standard.short_weekdays);
}

TEST(UserFormat, IsThatOfThePlace) {
  const RegionalFormat german = windows::UserFormat(L"de-DE");
  EXPECT_EQ(german.decimal_separator, ",");
  EXPECT_EQ(german.group_separator, ".");
  EXPECT_EQ(german.date_order, RegionalFormat::DateOrder::DayMonthYear);
  EXPECT_EQ(german.months[2], "M\xC3\xA4rz");
  EXPECT_EQ(german.weekdays[0], "Sonntag");
  const Date evening = ToDate({2011, 1, 20, 20, 36, 13});
  EXPECT_THAT(ShortDate(evening, german), ::testing::AnyOf("20.01.2011", "20.1.2011"))
      << "as Windows or Wine has it";
  EXPECT_EQ(LongTime(evening, german), "20:36:13");
}

TEST(UserFormat, OfAnUnknownPlaceIsTheStandardOne) {
  EXPECT_EQ(windows::UserFormat(L"no such place").decimal_separator, ".");
}

}  // namespace
}  // namespace mirelo::testing
