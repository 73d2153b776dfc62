#pragma once

#include <string>

#include "dialog/grid_test.h"

namespace mirelo::testing {

// The dialog with vertical tables: a grid with a column of tick cells for each field.
class VerticalGridTest : public GridTest {
 protected:
  // Opens it with these columns behind "Ticker", joined by commas, and these tickers.
  void Open(const std::string& fields, const Texts& tickers, bool charts = false) {
    Save("ListRight", "Ticker" + (fields.empty() ? "" : "," + fields));
    Save("BuildCharts", charts ? 1 : 0);
    GridTest::Open();
    Add(tickers);
  }
  void OpenWithCharts(const std::string& fields, const Texts& tickers) { Open(fields, tickers, true); }

  // The user's way to the boxes that lie on other tabs.
  void ToggleCharts() {
    form.C1TTickersSettings.UserSelect(kCharting);
    form.chkBuildCharts.UserClick();
    form.C1TTickersSettings.UserSelect(kTickers);
  }

  // One letter a tick cell of a row: "x" ticked, "-" not ticked, "." empty, "?" anything else.
  std::string Ticks(std::int32_t row) const {
    std::string ticks;
    for (std::int32_t col = 2; col < FG.Cols(); ++col) {
      const std::string& text = FG.TextMatrix(row, col);
      ticks += text == "-1" ? 'x' : text == "0" ? '-' : text.empty() ? '.' : '?';
    }
    return ticks;
  }
  Texts AllTicks() const {
    Texts rows;
    for (std::int32_t row = 1; row < FG.Rows(); ++row) rows.push_back(Ticks(row));
    return rows;
  }
  void SetTicks(std::int32_t row, const std::string& ticks) {
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(ticks.size()); ++i) {
      const char tick = ticks[static_cast<std::size_t>(i)];
      FG.TextMatrix(row, i + 2, tick == 'x' ? "-1" : tick == '-' ? "0" : "");
    }
  }
  void SetAllTicks(const Texts& rows) {
    std::int32_t row = 1;
    for (const std::string& ticks : rows) SetTicks(row++, ticks);
  }

  // The pictures of a column's ticker rows.
  Texts Pictures(std::int32_t col) const {
    Texts pictures;
    for (std::int32_t row = 1; row < FG.Rows(); ++row) pictures.push_back(FG.Picture(row, col));
    return pictures;
  }
  std::int32_t LastColumn() const { return FG.Cols() - 1; }
};

}  // namespace mirelo::testing
