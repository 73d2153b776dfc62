#include "quotetracker/portfolios.h"

#include <unordered_set>

#include "quotetracker/ascii.h"

namespace mirelo::quotetracker {

const Portfolios::Portfolio* Portfolios::Find(std::string_view name) const {
  const auto found = std::ranges::find_if(
      portfolios_, [&](const Portfolio& portfolio) { return SameText(portfolio.name, name); });
  return found == portfolios_.end() ? nullptr : &*found;
}

bool Portfolios::Add(std::string_view name, std::span<const std::string> symbols) {
  if (portfolios_.empty()) return false;
  const Portfolio* found = SameText(name, "CURRENT") ? &portfolios_.front() : Find(name);
  if (found == nullptr) return false;

  std::vector<std::string>& held = portfolios_[static_cast<std::size_t>(found - portfolios_.data())].symbols;
  std::unordered_set<std::string> known;
  for (const std::string& symbol : held) known.insert(UpperCase(symbol));
  std::vector<std::string> missing;
  for (const std::string& symbol : symbols) {
    if (!symbol.empty() && known.insert(UpperCase(symbol)).second) missing.push_back(symbol);
  }
  if (held.size() + missing.size() > kMostSymbols) return false;
  held.insert(held.end(), missing.begin(), missing.end());
  return true;
}

}  // namespace mirelo::quotetracker
