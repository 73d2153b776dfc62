#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "dialog/frmMirelo.h"
#include "support/facade_test.h"

namespace mirelo::testing {

// The dialog with its grid in plain mode and empty, and a person who works in it.
class GridTest : public FacadeTest {
 protected:
  GridTest() {
    form.frmAppSettings(&mGlobal::AppSettings());
    form.Owner(&*facade);
    form.FGVertical(false);
  }

  void Add(std::initializer_list<std::string> tickers) {
    for (const std::string& ticker : tickers) {
      form.txtTicker.UserEdit(ticker);
      form.ButAdd.UserPress();
    }
  }
  void ClickTicker(std::int32_t row) { FG.UserClickCell(row, TickerColumn()); }

  std::int32_t TickerColumn() const { return form.chkVerTable.Value(); }
  std::vector<std::string> Tickers() const { return TextsOfColumn(TickerColumn()); }
  std::vector<std::string> TextsOfColumn(std::int32_t col) const {
    std::vector<std::string> texts;
    for (std::int32_t row = 1; row < FG.Rows(); ++row) texts.push_back(FG.TextMatrix(row, col));
    return texts;
  }
  std::vector<std::string> TextsOfRow(std::int32_t row) const {
    std::vector<std::string> texts;
    for (std::int32_t col = 0; col < FG.Cols(); ++col) texts.push_back(FG.TextMatrix(row, col));
    return texts;
  }
  std::vector<std::string> Headers() const { return TextsOfRow(0); }
  std::string ActiveTicker() const { return FG.TextMatrix(FG.Row(), TickerColumn()); }

  // The numbers of the errors that were reported, in order.
  std::vector<int> ReportedErrors() const {
    constexpr std::string_view kMark = "\tError: ";
    std::vector<int> errors;
    for (const auto& report : desktop.reports) {
      errors.push_back(std::stoi(report.text.substr(report.text.find(kMark) + kMark.size())));
    }
    return errors;
  }

  frmMirelo form;
  forms::Grid& FG = form.FG;
};

}  // namespace mirelo::testing
