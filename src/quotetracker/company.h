#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quotetracker/price.h"

namespace mirelo::quotetracker {

// The facts of a company that its trades of a day do not change. They are made up from the letters of its
// ticker: the same ticker always has the same company.
struct Company {
  std::string name;
  std::string exchange;
  std::int64_t shares = 0;
  std::int64_t average_volume = 0;  // shares a day
  std::int32_t open_interest = 0;
  double price_earnings = 0;
  double yield = 0;  // per cent a year
  char upc = ' ';    // whether all its trades must be reported: Y or N
};

Company CompanyOf(std::string_view ticker);

// The market's value of all shares at a price, as people write it: "12.4B", "830.0M".
std::string MarketCap(const Company& company, Price price);

}  // namespace mirelo::quotetracker
