#include "quotetracker/moment.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace mirelo::quotetracker {
namespace {

using namespace std::chrono_literals;

std::string Written(Moment moment) {
  const Stamp stamp = ToStamp(moment);
  return std::string(stamp.Date()) + " " + std::string(stamp.Time());
}

TEST(Moment, IsWrittenAsItIsRead) {
  for (const auto& [date, time] :
       {std::pair{"12/31/2005", "09:30:15"}, std::pair{"01/01/1970", "00:00:00"},
        std::pair{"02/29/2024", "23:59:59"}, std::pair{"07/04/0001", "12:00:00"},
        std::pair{"12/31/9999", "23:59:59"}, std::pair{"06/15/1969", "01:02:03"}}) {
    SCOPED_TRACE(date);
    const auto moment = ParseMoment(date, time);
    ASSERT_TRUE(moment.has_value());
    EXPECT_EQ(Written(*moment), std::string(date) + " " + time);
  }
}

TEST(Moment, IsWrittenWithoutItsMilliseconds) {
  const Moment moment = ParseMoment("12/31/2005", "09:30:15").value();
  EXPECT_EQ(Written(moment + 999ms), "12/31/2005 09:30:15");
  EXPECT_EQ(Written(moment + 1s), "12/31/2005 09:30:16");
}

TEST(Moment, IsReadInOneFormOnly) {
  for (const auto& [date, time] :
       {std::pair{"", ""}, std::pair{"12/31/05", "09:30:15"}, std::pair{"31/12/2005", "09:30:15"},
        std::pair{"2005-12-31", "09:30:15"}, std::pair{"12/31/2005", "9:30:15"},
        std::pair{"12/31/2005", "24:00:00"}, std::pair{"12/31/2005", "09:60:00"},
        std::pair{"12/31/2005", "09:30:60"}, std::pair{"02/29/2023", "09:30:15"},
        std::pair{"00/10/2005", "09:30:15"}, std::pair{"1a/10/2005", "09:30:15"},
        std::pair{"12/31/2005", "09-30-15"}, std::pair{"12-31-2005", "09:30:15"},
        std::pair{"12/31/20051", "09:30:15"}}) {
    SCOPED_TRACE(std::string(date) + " " + time);
    EXPECT_EQ(ParseMoment(date, time), std::nullopt);
  }
}

TEST(Moment, IsTheMachinesLocalTime) {
  const Clock clock = SystemClock();
  const std::time_t before = std::time(nullptr);
  const std::string now = Written(clock());
  const std::time_t after = std::time(nullptr);
  bool matches = false;
  for (std::time_t second = before; second <= after; ++second) {
    char text[32];
    std::strftime(text, sizeof text, "%m/%d/%Y %H:%M:%S", std::localtime(&second));
    matches = matches || now == text;
  }
  EXPECT_TRUE(matches) << now;
}

}  // namespace
}  // namespace mirelo::quotetracker
