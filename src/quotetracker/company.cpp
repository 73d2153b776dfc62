#include "quotetracker/company.h"

#include <array>
#include <cmath>
#include <cstdio>

#include "quotetracker/random.h"

namespace mirelo::quotetracker {
namespace {

constexpr std::uint64_t kSeed = 20'060'102;

constexpr std::array<std::string_view, 16> kPlaces{
    "Alder",      "Bayview", "Cedar Hill", "Dunmore",  "Eastgate", "Fairmont", "Granite",   "Harbour",
    "Ironbridge", "Kestrel", "Lakeland",   "Meridian", "Norwood",  "Oakfield", "Pinecrest", "Redstone"};
constexpr std::array<std::string_view, 12> kTrades{"Semiconductor", "Software", "Foods",   "Energy",
                                                   "Railways",      "Pharma",   "Steel",   "Insurance",
                                                   "Instruments",   "Networks", "Airways", "Paper"};
constexpr std::array<std::string_view, 4> kForms{"Inc.", "Corp.", "Holdings", "Group"};
constexpr std::array<std::string_view, 3> kExchanges{"NYSE", "NASDAQ", "AMEX"};

template <std::size_t kCount>
std::string_view OneOf(const std::array<std::string_view, kCount>& choices, Random& random) {
  return choices[static_cast<std::size_t>(random.Between(0, kCount - 1))];
}

double ToCents(double value) { return std::round(value * 100) / 100; }

}  // namespace

Company CompanyOf(std::string_view ticker) {
  Random random(SeedFor(kSeed, ticker));
  Company company;
  company.name = OneOf(kPlaces, random);
  company.name += ' ';
  company.name += OneOf(kTrades, random);
  company.name += ' ';
  company.name += OneOf(kForms, random);
  company.exchange = OneOf(kExchanges, random);
  company.shares = 1'000'000 * random.Between(8, 4'000);
  company.average_volume = 100 * random.Between(1'000, 60'000);
  company.open_interest = static_cast<std::int32_t>(random.Between(200, 90'000));
  company.price_earnings = ToCents(6 + 40 * random.Unit());
  company.yield = ToCents(0.1 + 5 * random.Unit());
  company.upc = random.Unit() < 0.2 ? 'Y' : 'N';
  return company;
}

std::string MarketCap(const Company& company, Price price) {
  const double value = static_cast<double>(company.shares) * ToDouble(price);
  const bool billions = value >= 1e9;
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.1f%c", value / (billions ? 1e9 : 1e6), billions ? 'B' : 'M');
  return text.data();
}

}  // namespace mirelo::quotetracker
