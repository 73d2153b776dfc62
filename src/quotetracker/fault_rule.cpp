#include "quotetracker/fault_rule.h"

#include <charconv>
#include <stdexcept>
#include <string>

namespace mirelo::quotetracker {
namespace {

[[noreturn]] void Unreadable(std::string_view text) {
  throw std::invalid_argument("\"" + std::string(text) +
                              "\" does not say when a fault strikes: 3 is each third time, " +
                              "25% one time in four");
}

template <typename Number>
Number Parse(std::string_view number, std::string_view text) {
  Number value{};
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  if (error != std::errc{} || end != number.data() + number.size()) Unreadable(text);
  return value;
}

}  // namespace

FaultRule FaultRule::EveryNth(std::uint64_t n) {
  FaultRule rule;
  rule.every_ = n;
  return rule;
}

FaultRule FaultRule::ByChance(double share, std::uint64_t seed) {
  FaultRule rule;
  rule.share_ = share;
  rule.random_ = Random(seed);
  return rule;
}

FaultRule FaultRule::Parse(std::string_view text, std::uint64_t seed) {
  if (text.empty()) return Always();
  if (text.ends_with('%')) {
    const auto per_cent = quotetracker::Parse<double>(text.substr(0, text.size() - 1), text);
    if (!(per_cent >= 0 && per_cent <= 100)) Unreadable(text);
    return ByChance(per_cent / 100, seed);
  }
  const auto n = quotetracker::Parse<std::uint64_t>(text, text);
  if (n == 0) Unreadable(text);
  return EveryNth(n);
}

bool FaultRule::Strikes() {
  if (every_ > 0) return ++occasions_ % every_ == 0;
  return share_ > 0 && random_.Unit() < share_;
}

}  // namespace mirelo::quotetracker
