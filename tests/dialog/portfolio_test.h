#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "dialog/grid_test.h"
#include "dialog/scripted_portfolios.h"
#include "host/desktop.h"

namespace mirelo::testing {

inline const ScriptedDesktop::Box kRunQuoteTracker{"Please run QuoteTracker.", host::Desktop::kInformation,
                                                   "Dovanta2"};
inline const ScriptedDesktop::Box kAdjustPort{
    "Please adjust Dovanta HTTP Port parameter in accordance with the same parameter in QouteTracker -> "
    "Preferences.",
    host::Desktop::kInformation, "Dovanta2"};

// The dialog and a QuoteTracker with portfolios.
class PortfolioTest : public PlainGridTest {
 protected:
  PortfolioTest() {
    internet.answer = [this](const AnsweringInternet::Request& request) { return tracker(request); };
  }

  // Tickers "T1" to "Tn" in the grid, none of which is in the portfolio.
  void FillGrid(std::int32_t count) {
    FG.Rows(count + 1);
    for (std::int32_t row = 1; row <= count; ++row) FG.TextMatrix(row, 0, "T" + std::to_string(row));
  }
  std::vector<std::string> Added() const { return ScriptedPortfolios::Added(internet.Resources()); }

  ScriptedPortfolios tracker;
};

}  // namespace mirelo::testing
