#include "app/duration.h"

#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

namespace mirelo::app {

namespace {

struct Unit {
  std::string_view name;
  double milliseconds;
};

// A longer name stands before those that it begins with.
constexpr std::array<Unit, 5> kUnits{
    {{"ms", 1}, {"s", 1000}, {"m", 60'000}, {"h", 3'600'000}, {"d", 86'400'000}}};

constexpr double kLongest = 100.0 * 365 * 86'400'000;

}  // namespace

std::optional<std::chrono::milliseconds> ParseDuration(std::string_view text) {
  double total = 0;
  bool alone = true;
  while (!text.empty()) {
    double number = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    if (error != std::errc() || !(number >= 0)) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (text.empty() && alone) {
      total = number * 1000;
      break;
    }
    const Unit* unit = nullptr;
    for (const Unit& candidate : kUnits) {
      if (unit == nullptr && text.starts_with(candidate.name)) unit = &candidate;
    }
    if (unit == nullptr) return std::nullopt;
    text.remove_prefix(unit->name.size());
    total += number * unit->milliseconds;
    alone = false;
  }
  if (!(total >= 1) || total > kLongest) return std::nullopt;
  return std::chrono::milliseconds(std::llround(total));
}

}  // namespace mirelo::app
