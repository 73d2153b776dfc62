#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace mirelo::quotetracker {

// A moment of the market's local time, to the millisecond. Without a zone: that of the machine.
using Moment = std::chrono::local_time<std::chrono::milliseconds>;

// Asked for the present moment wherever one is wanted, so that tests and replays bring their own.
using Clock = std::function<Moment()>;

// The machine's local time.
Clock SystemClock();

// A moment as replies write it.
struct Stamp {
  std::array<char, 10> date{};  // mm/dd/yyyy
  std::array<char, 8> time{};   // hh:mm:ss
  std::string_view Date() const { return {date.data(), date.size()}; }
  std::string_view Time() const { return {time.data(), time.size()}; }
  friend bool operator==(const Stamp&, const Stamp&) = default;
};

// Years run from 0 to 9999; a moment outside them has the nearest year's digits.
Stamp ToStamp(Moment moment);

// The moment of a date mm/dd/yyyy and a time hh:mm:ss, in exactly this form. Nothing for a day that no
// calendar has.
std::optional<Moment> ParseMoment(std::string_view date, std::string_view time);

}  // namespace mirelo::quotetracker
