#include "app/shown_quote.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "adapters/workbook/display/displayed_text.h"
#include "automation/text.h"

namespace mirelo::app {

namespace {

constexpr std::array<std::string_view, 9> kPrices{"Last", "Bid",  "Ask",     "Change",  "High",
                                                  "Low",  "Open", "52w Low", "52w High"};

bool IsPrice(const std::string& column) {
  return std::ranges::any_of(kPrices, [&](std::string_view price) { return EqualText(price, column); });
}

}  // namespace

std::vector<std::string> ShownQuote(const std::vector<std::string>& columns, const day::QuoteRow& row,
                                    const std::string& price_format) {
  std::vector<std::string> texts = day::TextsOf(row);
  for (std::size_t c = 0; c < std::min(columns.size(), row.size()); ++c) {
    if (row[c].kind() == day::QuoteValue::Kind::Number && IsPrice(columns[c]))
      texts[c] = workbook::NumberInSection(row[c].ToNumber(), price_format);
  }
  return texts;
}

}  // namespace mirelo::app
