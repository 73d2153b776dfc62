#include "quotetracker/moment.h"

#include <algorithm>
#include <ctime>

namespace mirelo::quotetracker {
namespace {

using namespace std::chrono;

void PutDigits(char* at, int width, int value) {
  for (int i = width - 1; i >= 0; --i, value /= 10) at[i] = static_cast<char>('0' + value % 10);
}

// The number that `text` holds in decimal digits alone.
std::optional<int> Digits(std::string_view text) {
  int value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return std::nullopt;
    value = value * 10 + (c - '0');
  }
  return value;
}

// How far the local time is ahead of universal time at that moment.
seconds OffsetAt(std::time_t utc) {
  std::tm local{};
#ifdef _WIN32
  localtime_s(&local, &utc);
  return seconds{_mkgmtime(&local) - utc};
#else
  localtime_r(&utc, &local);
  return seconds{local.tm_gmtoff};
#endif
}

// The zone's offset is asked for once a second: that costs more than the rest of a reply's line.
class LocalTime {
 public:
  Moment operator()() {
    const auto now = time_point_cast<milliseconds>(system_clock::now());
    const auto second = floor<seconds>(now);
    if (second != second_) {
      offset_ = OffsetAt(system_clock::to_time_t(second));
      second_ = second;
    }
    return Moment{now.time_since_epoch() + offset_};
  }

 private:
  time_point<system_clock, seconds> second_ = time_point<system_clock, seconds>::min();
  seconds offset_{0};
};

}  // namespace

Clock SystemClock() { return LocalTime{}; }

Stamp ToStamp(Moment moment) {
  const auto day = floor<days>(moment);
  const year_month_day date{day};
  const hh_mm_ss time{floor<seconds>(moment - day)};

  Stamp stamp{{'0', '0', '/', '0', '0', '/', '0', '0', '0', '0'}, {'0', '0', ':', '0', '0', ':', '0', '0'}};
  PutDigits(&stamp.date[0], 2, static_cast<int>(static_cast<unsigned>(date.month())));
  PutDigits(&stamp.date[3], 2, static_cast<int>(static_cast<unsigned>(date.day())));
  PutDigits(&stamp.date[6], 4, std::clamp(static_cast<int>(date.year()), 0, 9999));
  PutDigits(&stamp.time[0], 2, static_cast<int>(time.hours().count()));
  PutDigits(&stamp.time[3], 2, static_cast<int>(time.minutes().count()));
  PutDigits(&stamp.time[6], 2, static_cast<int>(time.seconds().count()));
  return stamp;
}

std::optional<Moment> ParseMoment(std::string_view date, std::string_view time) {
  if (date.size() != 10 || date[2] != '/' || date[5] != '/') return std::nullopt;
  if (time.size() != 8 || time[2] != ':' || time[5] != ':') return std::nullopt;
  const auto month_number = Digits(date.substr(0, 2));
  const auto day_number = Digits(date.substr(3, 2));
  const auto year_number = Digits(date.substr(6));
  const auto hour = Digits(time.substr(0, 2));
  const auto minute = Digits(time.substr(3, 2));
  const auto second = Digits(time.substr(6));
  if (!month_number || !day_number || !year_number || !hour || !minute || !second) return std::nullopt;

  const year_month_day civil{year{*year_number}, month{static_cast<unsigned>(*month_number)},
                             day{static_cast<unsigned>(*day_number)}};
  if (!civil.ok() || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
  return local_days{civil} + hours{*hour} + minutes{*minute} + seconds{*second};
}

}  // namespace mirelo::quotetracker
