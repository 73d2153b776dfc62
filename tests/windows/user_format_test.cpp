#include "adapters/windows/system.h"

#include "adapters/windows/user_format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "automation/date.h"
#include "automation/format.h"
#include "automation/wide_text.h"

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

// "AM" and "PM" are the marks of few places.
TEST(UserFormat, WritesTheHalvesOfADayAsThePlaceDoes) {
  const Date evening = ToDate({2011, 1, 20, 20, 36, 13});
  const RegionalFormat taiwanese = windows::UserFormat(L"zh-TW");
  EXPECT_EQ(taiwanese.am, "\u4E0A\u5348");
  EXPECT_THAT(LongTime(evening, taiwanese), ::testing::HasSubstr("\u4E0B\u5348"));
  EXPECT_THAT(LongTime(evening, taiwanese), ::testing::HasSubstr("8:36:13"));
  EXPECT_EQ(LongTime(evening, windows::UserFormat(L"en-US")), "8:36:13 PM");
}

TEST(UserFormat, KeepsWhatStandsInQuotes) {
  const RegionalFormat spanish = windows::UserFormat(L"es-ES");
  EXPECT_EQ(Format(ToDate({2011, 1, 20}), "Long Date", spanish), "jueves, 20 de enero de 2011");
}

SYSTEMTIME SystemTimeOf(const CivilTime& civil) {
  SYSTEMTIME time{};
  time.wYear = static_cast<WORD>(civil.year);
  time.wMonth = static_cast<WORD>(civil.month);
  time.wDay = static_cast<WORD>(civil.day);
  time.wHour = static_cast<WORD>(civil.hour);
  time.wMinute = static_cast<WORD>(civil.minute);
  time.wSecond = static_cast<WORD>(civil.second);
  return time;
}

class AsWindowsWrites : public ::testing::TestWithParam<const wchar_t*> {
 protected:
  static constexpr DWORD kOfThePlace = LOCALE_NOUSEROVERRIDE;

  static std::string WindowsDate(const CivilTime& civil, DWORD form) {
    const SYSTEMTIME time = SystemTimeOf(civil);
    wchar_t text[200] = L"";
    ::GetDateFormatEx(GetParam(), form | kOfThePlace, &time, nullptr, text, 200, nullptr);
    return NarrowText(text);
  }
  static std::string WindowsTime(const CivilTime& civil) {
    const SYSTEMTIME time = SystemTimeOf(civil);
    wchar_t text[200] = L"";
    ::GetTimeFormatEx(GetParam(), kOfThePlace, &time, nullptr, text, 200);
    return NarrowText(text);
  }
};

TEST_P(AsWindowsWrites, AreDatesAndTimes) {
  const RegionalFormat place = windows::UserFormat(GetParam());
  for (int i = 0; i < 400; ++i) {
    const CivilTime civil{1990 + i % 70, 1 + i % 12, 1 + i % 28, i % 24, i * 7 % 60, i * 11 % 60};
    SCOPED_TRACE(i);
    const Date date = ToDate(civil);
    EXPECT_EQ(ShortDate(date, place), WindowsDate(civil, DATE_SHORTDATE));
    EXPECT_EQ(LongTime(date, place), WindowsTime(civil));
    EXPECT_EQ(Format(date, "Long Date", place), WindowsDate(civil, DATE_LONGDATE));
  }
}

INSTANTIATE_TEST_SUITE_P(Places, AsWindowsWrites,
                         ::testing::Values(L"en-US", L"en-GB", L"en-AU", L"de-DE", L"de-CH", L"fr-FR",
                                           L"es-ES", L"sv-SE", L"ja-JP", L"ko-KR", L"zh-TW", L"zh-CN",
                                           L"hi-IN"),
                         [](const auto& test) {
                           std::string name = NarrowText(test.param);
                           return name.erase(name.find('-'), 1);
                         });

TEST(UserFormat, IsTheUsersOwnWhereNoPlaceIsNamed) {
  const RegionalFormat user = windows::UserFormat();
  wchar_t text[80] = L"";
  const CivilTime evening{2011, 1, 20, 20, 36, 13};
  const SYSTEMTIME time = SystemTimeOf(evening);
  ::GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, text, 80, nullptr);
  EXPECT_EQ(ShortDate(ToDate(evening), user), NarrowText(text));
  wchar_t separator[8] = L"";
  ::GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, separator, 8);
  EXPECT_EQ(user.decimal_separator, NarrowText(separator));
}

// What Windows does not know is as in the standard format, whole.
TEST(UserFormat, OfAnUnknownPlaceIsTheStandardOne) {
  const RegionalFormat unknown = windows::UserFormat(L"no such place");
  EXPECT_EQ(unknown.decimal_separator, ".");
  EXPECT_EQ(unknown.short_date, RegionalFormat::Standard().short_date);
  EXPECT_EQ(unknown.long_time, RegionalFormat::Standard().long_time);
  EXPECT_EQ(unknown.months, RegionalFormat::Standard().months);
}

}  // namespace
}  // namespace mirelo::testing
