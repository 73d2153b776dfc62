#pragma once

#include <string_view>

namespace mirelo::day {

// How people are told of a ticker that has no quote; its name follows.
inline constexpr std::string_view kKnowsNoQuoteOf = "QuoteTracker knows no quote of ";

}  // namespace mirelo::day
