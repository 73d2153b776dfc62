#include "adapters/windows/system.h"

#include "adapters/windows/system_clock.h"
#include "adapters/windows/user_format.h"

namespace mirelo::windows {

SystemClock::SystemClock() : regional_(UserFormat()) {}

Date SystemClock::Now() {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  return ToDate({now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond});
}

double SystemClock::SecondsSinceMidnight() {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  return (now.wHour * 60 + now.wMinute) * 60 + now.wSecond + now.wMilliseconds / 1000.0;
}

std::int64_t SystemClock::Second() {
  FILETIME now{};  // in tenths of microseconds
  ::GetSystemTimeAsFileTime(&now);
  const std::uint64_t ticks = (std::uint64_t{now.dwHighDateTime} << 32) | now.dwLowDateTime;
  return static_cast<std::int64_t>(ticks / 10'000'000);
}

}  // namespace mirelo::windows
