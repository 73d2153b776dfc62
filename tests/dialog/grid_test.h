#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "automation/text.h"
#include "dialog/dialog_test.h"

namespace mirelo::testing {

using Texts = std::vector<std::string>;

// The dialog, open for the rest of the test once Open() ran, and a person who works with its tickers.
class GridTest : public DialogTest {
 protected:
  void Open() {
    form.frmAppSettings(&mGlobal::AppSettings());
    form.Owner(&*facade);
    form.Load();
    form.Show();
    form.Activate();
  }

  void Add(const Texts& tickers) {
    for (const std::string& ticker : tickers) {
      form.txtTicker.UserEdit(ticker);
      form.ButAdd.UserPress();
    }
  }
  void ClickTicker(std::int32_t row) { FG.UserClickCell(row, TickerColumn()); }

  std::int32_t TickerColumn() const { return form.chkVerTable.Value(); }
  Texts Tickers() const { return TextsOfColumn(TickerColumn()); }
  Texts TextsOfColumn(std::int32_t col) const {
    Texts texts;
    for (std::int32_t row = 1; row < FG.Rows(); ++row) texts.push_back(FG.TextMatrix(row, col));
    return texts;
  }
  Texts TextsOfRow(std::int32_t row) const {
    Texts texts;
    for (std::int32_t col = 0; col < FG.Cols(); ++col) texts.push_back(FG.TextMatrix(row, col));
    return texts;
  }
  Texts Headers() const { return TextsOfRow(0); }
  std::string ActiveTicker() const { return FG.TextMatrix(FG.Row(), TickerColumn()); }

  frmMirelo form;
  forms::Grid& FG = form.FG;
};

// The dialog without vertical tables: a grid of one column.
class PlainGridTest : public GridTest {
 protected:
  PlainGridTest() {
    Save("VerticalTable", 0);
    Open();
  }
};

}  // namespace mirelo::testing
