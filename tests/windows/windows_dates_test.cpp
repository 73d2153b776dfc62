// Dates as we write, read and count them, held against what Windows does.

#include "com/system.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/windows/user_format.h"
#include "automation/date.h"
#include "automation/format.h"
#include "automation/regional_format.h"
#include "automation/wide_text.h"
#include "com/errors.h"
#include "com/text.h"

namespace mirelo::testing {
namespace {

constexpr double kSecondsOfADay = 86'400;
constexpr double kHalfASecond = 0.5 / kSecondsOfADay;

struct Region {
  const wchar_t* name;
  LCID number;
};
void PrintTo(const Region& region, std::ostream* out) { *out << NarrowText(region.name); }

const Region kAmerica{L"en-US", MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT)};
const Region kGermany{L"de-DE", MAKELCID(MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN), SORT_DEFAULT)};
const Region kBritain{L"en-GB", MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_UK), SORT_DEFAULT)};
const Region kJapan{L"ja-JP", MAKELCID(MAKELANGID(LANG_JAPANESE, SUBLANG_DEFAULT), SORT_DEFAULT)};

// Of every time of day, also before the day from which days are counted, and days and times alone.
std::vector<Date> Moments() {
  std::vector<Date> moments{{0}, {0.5}, {1}, {-1}, {-1.25}, {40563.858483796296}};
  std::mt19937 chance(17);
  std::uniform_int_distribution<int> second(0, 86'399);
  for (int day = -40'000; day < 90'000; day += 61) {
    const double fraction = second(chance) / kSecondsOfADay;
    moments.push_back({static_cast<double>(day)});
    moments.push_back({day < 0 ? day - fraction : day + fraction});
    if (day % 7 == 0) moments.push_back({fraction});
  }
  return moments;
}

std::string Taken(BSTR text) {
  std::string told = com::TextOf(text);
  ::SysFreeString(text);
  return told;
}

std::optional<Date> WindowsDate(std::string_view text, const Region& region) {
  DATE date = 0;
  std::wstring wide = WideText(text);
  if (FAILED(::VarDateFromStr(wide.data(), region.number, LOCALE_NOUSEROVERRIDE, &date))) return std::nullopt;
  return Date{date};
}

class DatesOfARegion : public ::testing::TestWithParam<Region> {
 protected:
  const RegionalFormat ours = windows::UserFormat(GetParam().name);
};

TEST_P(DatesOfARegion, AreWrittenAsWindowsWritesThem) {
  for (const Date moment : Moments()) {
    BSTR text = nullptr;
    com::Require(::VarBstrFromDate(moment.serial, GetParam().number, LOCALE_NOUSEROVERRIDE, &text));
    EXPECT_EQ(GeneralDate(moment, ours), Taken(text)) << moment.serial;
  }
}

TEST_P(DatesOfARegion, AreReadAsWindowsReadsThem) {
  const char* const kForms[] = {"c",          "ddddd", "ttttt", "yyyy-mm-dd", "yyyy-mm-dd hh:nn:ss",
                                "d mmm yyyy", "hh:nn"};
  for (const Date moment : Moments()) {
    for (const std::string_view form : kForms) {
      // Of Japan's months, which begin with their numbers, people write no such dates, and we read none.
      if (form == "d mmm yyyy" && ours.short_months[0].starts_with('1')) continue;
      const std::string text = Format(moment, form, ours);
      const auto theirs = WindowsDate(text, GetParam());
      const auto read = ParseDate(text, ours);
      ASSERT_EQ(read.has_value(), theirs.has_value()) << text;
      if (!read) continue;
      EXPECT_NEAR(read->serial, theirs->serial, kHalfASecond) << text;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Regions, DatesOfARegion, ::testing::Values(kAmerica, kGermany, kBritain, kJapan),
                         [](const auto& test) {
                           std::string name = NarrowText(test.param.name);
                           return name.erase(name.find('-'), 1);
                         });

TEST(WindowsDates, ReadWhatPeopleWriteAsWeDo) {
  const RegionalFormat american = windows::UserFormat(kAmerica.name);
  for (const char* const text : {"1/20/2011 8:36:13 AM",
                                 "1/20/2011 8:36 PM",
                                 "20 Jan 2011",
                                 "Jan 20, 2011",
                                 "January 20, 2011",
                                 "2011-01-20",
                                 "2011/1/20",
                                 "20/1/2011",
                                 "1/2/3",
                                 "1/2/29",
                                 "1/2/99",
                                 "9:30",
                                 "09:30:15",
                                 "12:00 AM",
                                 "12:00 PM",
                                 "8:36 am",
                                 "8 PM",
                                 "",
                                 " ",
                                 "abc",
                                 "13/13/2011",
                                 "2/29/2011",
                                 "2/29/2012",
                                 "24:00",
                                 "12:60",
                                 "1/20/2011 x",
                                 "2011",
                                 "1/20/20111",
                                 "20-Jan-2011",
                                 "20 jan 2011"}) {
    const auto ours = ParseDate(text, american);
    const auto theirs = WindowsDate(text, kAmerica);
    EXPECT_EQ(ours.has_value(), theirs.has_value()) << '"' << text << '"';
    if (!ours || !theirs) continue;
    EXPECT_NEAR(ours->serial, theirs->serial, kHalfASecond) << '"' << text << '"';
  }
}

// Years of two digits end with 2029 in Visual Basic and here, and with 2049 in Wine as in Windows' newest
// calendars. A day without a year is one of this year there; here it is no date.
TEST(WindowsDates, ReadTheseInOtherWaysThanWeDo) {
  const RegionalFormat american = windows::UserFormat(kAmerica.name);
  EXPECT_EQ(ToCivil(ParseDate("1/2/30", american).value()).year, 1930);
  EXPECT_EQ(ToCivil(WindowsDate("1/2/49", kAmerica).value()).year % 100, 49);
  for (const char* const text : {"1/20", "20 Jan"}) {
    EXPECT_TRUE(WindowsDate(text, kAmerica)) << text;
    EXPECT_FALSE(ParseDate(text, american)) << text;
  }
}

// VarFormat takes the user's region, so ours is that one as well. Wine keeps the hours of a day with "AM/PM"
// behind "nn", and writes no "Long Time" at midnight, against the documentation: these two are not compared.
TEST(WindowsDates, AreWrittenInAFormatAsWeDo) {
  const RegionalFormat user = windows::UserFormat();
  for (const char* const format :
       {"mm/dd/yyyy", "hh:mm:ss", "mm/dd/yyyy hh:mm:ss", "m/d/yy", "yyyy-mm-dd", "dd.mm.yyyy", "h:mm:ss a/p",
        "dddd, mmmm d", "ddd mmm", "w y q", "hh", "nn", "ss", "hhnnss", "\"at\" hh:nn", "Short Date"}) {
    for (const Date moment : Moments()) {
      VARIANT date;
      date.vt = VT_DATE;
      date.date = moment.serial;
      std::wstring wide = WideText(format);
      BSTR text = nullptr;
      com::Require(::VarFormat(&date, wide.data(), 1, 1, 0, &text));
      EXPECT_EQ(Format(moment, format, user), Taken(text)) << format << " of " << moment.serial;
    }
  }
}

// By Windows' count of tenths of microseconds.
Date WindowsLater(Date date, std::int64_t seconds) {
  SYSTEMTIME time{};
  FILETIME file{};
  ::VariantTimeToSystemTime(date.serial, &time);
  ::SystemTimeToFileTime(&time, &file);
  ULARGE_INTEGER count{{file.dwLowDateTime, file.dwHighDateTime}};
  count.QuadPart += static_cast<std::uint64_t>(seconds * 10'000'000);
  file = {count.LowPart, count.HighPart};
  ::FileTimeToSystemTime(&file, &time);
  double later = 0;
  ::SystemTimeToVariantTime(&time, &later);
  return {later};
}

TEST(WindowsDates, AddMinutesAndHoursAsWeDo) {
  std::mt19937 chance(23);
  std::uniform_int_distribution<std::int32_t> count(-100'000, 100'000);
  for (const Date moment : Moments()) {
    for (const std::int32_t minutes : {count(chance), 1, -1, 59, 720}) {
      EXPECT_NEAR(AddMinutes(moment, minutes).serial, WindowsLater(moment, std::int64_t{minutes} * 60).serial,
                  1e-9)
          << moment.serial << " and " << minutes;
    }
    for (const std::int32_t hours : {count(chance), 1, -1, 12, -24}) {
      EXPECT_NEAR(AddHours(moment, hours).serial, WindowsLater(moment, std::int64_t{hours} * 3600).serial,
                  1e-9)
          << moment.serial << " and " << hours;
    }
  }
}

}  // namespace
}  // namespace mirelo::testing
