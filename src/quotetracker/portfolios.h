#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mirelo::quotetracker {

// The named lists of symbols that a QuoteTracker user keeps. The first one is the current one. Names and
// symbols are compared without regard to ASCII case.
class Portfolios {
 public:
  static constexpr std::size_t kMostSymbols = 20'000;  // in one portfolio, as far as Add adds

  struct Portfolio {
    std::string name;
    std::vector<std::string> symbols;
  };

  Portfolios() = default;
  explicit Portfolios(std::vector<Portfolio> portfolios) : portfolios_(std::move(portfolios)) {}

  const std::vector<Portfolio>& All() const { return portfolios_; }

  // Null for a name that no portfolio has.
  const Portfolio* Find(std::string_view name) const;

  // Adds the symbols that the portfolio lacks, in their order. `name` may be "CURRENT", which is the first
  // one. False, with nothing added, when there is no such portfolio or no room.
  bool Add(std::string_view name, std::span<const std::string> symbols);

 private:
  std::vector<Portfolio> portfolios_;
};

}  // namespace mirelo::quotetracker
