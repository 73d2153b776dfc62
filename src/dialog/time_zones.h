#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "automation/number.h"

namespace mirelo {

// A time zone that the dialog offers, and how many hours it lies ahead of US Eastern time.
struct TimeZone {
  const char* name;
  const char* hours;
};

// In the order of ComDisplayTimezone.
inline constexpr std::array<TimeZone, 17> kTimeZones{{
    {"(ET-1)Us Central", "-1"},
    {"(ET) US Eastern", "0"},
    {"(ET+1) Argentina", "1"},
    {"(ET+1) Brazil", "1"},
    {"(ET+4) GMT -1 (MoneyAM BF)", "4"},
    {"(ET+4) UTC", "4"},
    {"(ET+5) Europe GMT(UK/Portugal,etc)", "5"},
    {"(ET+5) GMT - No Daylight Savings", "5"},
    {"(ET+6) Europe GET(France/Germany,etc)", "6"},
    {"(ET+6) South Africa(Johannesburg)", "6"},
    {"(ET+7) Europe EET(Finland/Greece)", "7"},
    {"(ET+7) Middle East(Riyadh)", "7"},
    {"(ET+9.5) India", "9.5"},
    {"(ET+12) Singapore/Hong Kong", "12"},
    {"(ET+13) Japan/Korea", "13"},
    {"(ET+14) Australia(Sydney)", "14"},
    {"(ET+16) New ZealandTicker", "16"},
}};

// The one zone with a half hour: its displacement is stored as 9 hours and 30 minutes, not as the row's text
// "9.5".
inline constexpr std::size_t kIndia = 12;

// What can be added to a zone: half hours from "23:30" down over "0:00" to "-23:30", the order of
// ComDisplayOffset.
inline constexpr std::int32_t kHighestHalfHour = 47;
inline constexpr std::int32_t kLowestHalfHour = -47;

// "1:30" for 3, "-0:30" for -1.
inline std::string DisplayOffsetText(std::int32_t half_hours) {
  const std::int32_t size = half_hours < 0 ? -half_hours : half_hours;
  return (half_hours < 0 ? "-" : "") + NumberText(size / 2) + (size % 2 == 0 ? ":00" : ":30");
}

}  // namespace mirelo
