#include "scenarios/sent_quotes.h"

#include <cmath>

#include "support/level1_wire.h"

namespace mirelo::testing {

namespace {

// A price in a reply is a text, which reads back as the double that is nearest to it.
constexpr double kSlack = 1e-9;

}  // namespace

std::string SentQuotes::NextRecord(std::string_view kind) {
  const std::int32_t number = Next();
  return Level1Wire(kind)
      .Symbol(ticker_)
      .Last(Last(number))
      .Volume(Volume(number))
      .LastSize(100)
      .Stamp("01202011093000")
      .Bytes();
}

std::string SentQuotes::NextLine() {
  const std::int32_t number = Next();
  return ticker_ + ",01/20/2011,09:30:00," + LastText(number) + ",28.34,28.36,-0.10,U," +
         std::to_string(Volume(number)) + ",29,28,100,200,77,150,12,28.5,20,35";
}

std::string SentQuotes::LastText(std::int32_t number) const {
  const std::string cents = std::to_string(cents_ + number);
  return cents.substr(0, cents.size() - 2) + "." + cents.substr(cents.size() - 2);
}

std::int32_t SentQuotes::NumberOf(double last, double volume) const {
  const double number = std::round(volume / 100);
  if (number < 1 || number > newest_) return 0;
  const auto found = static_cast<std::int32_t>(number);
  const bool fits = std::abs(Last(found) - last) < kSlack && static_cast<double>(Volume(found)) == volume;
  return fits ? found : 0;
}

}  // namespace mirelo::testing
