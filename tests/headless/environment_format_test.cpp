#include "adapters/headless/environment_format.h"

#include <gtest/gtest.h>

#include <string>

#include "support/environment_variable.h"

namespace mirelo::headless {
namespace {

using testing::EnvironmentVariable;

bool IsStandard(const RegionalFormat& format) {
  return format.short_date == RegionalFormat::Standard().short_date &&
         format.long_time == RegionalFormat::Standard().long_time;
}

TEST(EnvironmentFormat, IsTheStandardOneUnlessAnotherPlaceIsNamed) {
  const struct {
    const char* lc_all;
    const char* lc_time;
  } kEnvironments[] = {
      {nullptr, nullptr},
      {"", ""},
      {nullptr, "C"},
      {nullptr, "C.UTF-8"},
      {nullptr, "POSIX"},
      {nullptr, "en_US"},
      {nullptr, "en_US.UTF-8"},
      {"C", "de_DE.UTF-8"},
      {"en_US.ISO-8859-1", nullptr},
      {nullptr, "xx_XX"},
      {"no such locale", nullptr},
      {"/etc/passwd", nullptr},
      {"@euro", nullptr},
  };
  for (const auto& [lc_all, lc_time] : kEnvironments) {
    SCOPED_TRACE(std::string(lc_all ? lc_all : "(none)") + " " + (lc_time ? lc_time : "(none)"));
    const EnvironmentVariable all("LC_ALL", lc_all);
    const EnvironmentVariable time("LC_TIME", lc_time);
    EXPECT_TRUE(IsStandard(EnvironmentFormat()));
  }
}

// The one locale besides C that is part of the C library itself.
TEST(FormatOfLocale, ReadsALocaleOfTheMachine) {
  const auto format = FormatOfLocale("C.UTF-8");
  ASSERT_TRUE(format.has_value());
  EXPECT_EQ(format->short_date, "mm/dd/yy");
  EXPECT_EQ(format->long_time, "hh:nn:ss");
  EXPECT_EQ(format->short_time, "hh:nn");
  EXPECT_EQ(format->decimal_separator, ".");
  EXPECT_EQ(format->group_separator, "");
  EXPECT_EQ(format->date_order, RegionalFormat::DateOrder::MonthDayYear);
  EXPECT_EQ(format->months[0], "January");
  EXPECT_EQ(format->months[11], "December");
  EXPECT_EQ(format->short_months[4], "May");
  EXPECT_EQ(format->weekdays[0], "Sunday");
  EXPECT_EQ(format->short_weekdays[6], "Sat");
  EXPECT_EQ(format->am + format->pm, "AMPM");
}

TEST(FormatOfLocale, FindsTheUtf8FormOfAName) { EXPECT_TRUE(FormatOfLocale("C").has_value()); }

TEST(FormatOfLocale, IsNothingForALocaleThatIsNotThere) {
  EXPECT_FALSE(FormatOfLocale("xx_XX").has_value());
  EXPECT_FALSE(FormatOfLocale("xx_XX.UTF-8@euro").has_value());
}

}  // namespace
}  // namespace mirelo::headless
