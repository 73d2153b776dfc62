#include "app/live/seldom.h"

#include <cstddef>

namespace mirelo::app {

namespace {

constexpr std::size_t kMostLines = 1000;

std::string WithoutNumbers(const std::string& line) {
  std::string rest;
  for (const char c : line) {
    if (c < '0' || c > '9') rest += c;
  }
  return rest;
}

}  // namespace

bool Seldom::IsDue(const std::string& line, Time now) {
  if (told_.size() > kMostLines) told_.clear();
  const auto [told, is_first] = told_.try_emplace(WithoutNumbers(line), now);
  if (!is_first && now - told->second < kPace) return false;
  told->second = now;
  return true;
}

}  // namespace mirelo::app
